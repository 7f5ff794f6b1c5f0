"""The packages, installed, unpacked and made a second time."""
