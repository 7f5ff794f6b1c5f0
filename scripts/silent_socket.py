#!/usr/bin/env python3
"""Takes connections on a socket of this machine and never answers.

    silent_socket.py PATH
"""

import socket
import sys
import time

# Longer than any trial waits for an answer.
SECONDS = 600


def main() -> None:
    with socket.socket(socket.AF_UNIX) as listening:
        listening.bind(sys.argv[1])
        listening.listen(16)
        time.sleep(SECONDS)


if __name__ == "__main__":
    main()
