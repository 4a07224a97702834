"""What the command tells of Python is what the package has."""

import ctypes
import inspect
import os
import subprocess

from support import WorkstationCase
from meridek_felspar import library
from meridek_felspar._library import described_prototypes
from meridek_felspar.handles import KINDS, Handle


class Reference(WorkstationCase):
    def setUp(self):
        super().setUp()
        text = subprocess.check_output([os.environ["FELSPAR_PROGRAM"], "api", "--format", "python"], text=True)
        self.told = {}
        exec(text, self.told)

    def test_prototypes_match_the_library(self):
        prototypes = {}
        for name, function in self.told.items():
            if name.startswith("py_"):
                types = {key: eval(word, vars(ctypes)) for key, word in function.__annotations__.items()}
                prototypes[name] = types.pop("return"), tuple(types.values())
        self.assertEqual(prototypes, described_prototypes(library()))

    def test_methods_match_the_headless_host(self):
        methods = dict(inspect.getmembers(self.told["Workstation"], inspect.isfunction))
        self.assertEqual(sorted(methods), sorted(self.reaper._functions))
        for name, method in methods.items():
            told = list(inspect.signature(method).parameters.values())[1:]
            taken = [parameter for parameter in getattr(self.reaper, name).parameters if parameter.is_argument]
            with self.subTest(name):
                self.assertEqual([p.name.rstrip("_") for p in told], [p.name for p in taken])
                self.assertEqual([p.default is None for p in told], [p.is_optional for p in taken])
                handles = [(p, KINDS[q.type_name]) for p, q in zip(told, taken) if q.type_name in KINDS]
                self.assertEqual(
                    [p.annotation.removesuffix(" | None") for p, _ in handles], [kind.__name__ for _, kind in handles]
                )

    def test_classes_of_handles_are_those_of_the_host(self):
        told = {value for value in self.told.values() if isinstance(value, type) and issubclass(value, Handle)}
        self.assertEqual(told, set(KINDS.values()))
