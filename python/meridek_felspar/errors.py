"""What goes wrong, as exceptions."""


class FelsparError(Exception):
    """Something that this package or the library could not do."""


class LibraryNotFound(FelsparError):
    """A shared library that is in none of the places where it was sought."""


class CutTextWarning(UserWarning):
    """A text filled the library's buffer of 1023 bytes: what did not fit into it is lost."""


class FailureWarning(UserWarning):
    """Something that a function of the headless workstation could not do, and nobody asked about."""
