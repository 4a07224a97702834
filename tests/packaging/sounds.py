"""Two folders of lines in the current folder, for trying an import: `fr` is louder than `en`."""

import array
import math
import pathlib
import wave


def make() -> None:
    for folder, amplitude in (("fr", 20000), ("en", 5000)):
        pathlib.Path(folder).mkdir()
        for line in ("door_1", "hello"):
            with wave.open(f"{folder}/{line}.wav", "wb") as file:
                file.setparams((1, 2, 8000, 0, "NONE", ""))
                samples = (round(amplitude * math.sin(n / 4) * (n % 4000) / 4000) for n in range(12000))
                file.writeframes(array.array("h", samples).tobytes())


if __name__ == "__main__":
    make()
