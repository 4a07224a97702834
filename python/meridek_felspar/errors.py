"""Exceptions and warnings."""


class FelsparError(Exception):
    """Something that this package or the library could not do."""


class LibraryNotFound(FelsparError):
    """A shared library is in none of the places where it is looked for."""


class CutTextWarning(UserWarning):
    """A string filled the library's buffer of 1,023 bytes; whatever did not fit is lost."""


class FailureWarning(UserWarning):
    """A failure of the headless workstation that the program did not ask about."""
