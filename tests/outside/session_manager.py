"""A session manager as it should be, in a process of its own, so that it can be halted. Run as a program
it writes its addresses, and a line for each client that registers, until its end."""

import ctypes
import os
import pathlib
import select
import subprocess
import sys

from processes import start, stop

Pointer = ctypes.c_void_p
Text = ctypes.c_char_p

ALL = (1 << 10) - 1  # callbacks
ROOM = 256  # bytes for an error

HostBased = ctypes.CFUNCTYPE(ctypes.c_int, Text)
OnError = ctypes.CFUNCTYPE(None, Pointer)
OnClient = ctypes.CFUNCTYPE(
    ctypes.c_int, Pointer, Pointer, ctypes.POINTER(ctypes.c_ulong), ctypes.POINTER(Pointer * 20),
    Pointer,
)
OnRegister = ctypes.CFUNCTYPE(ctypes.c_int, Pointer, Pointer, Pointer)
OnMessage = ctypes.CFUNCTYPE(None, Pointer, Pointer, Pointer, Pointer, Pointer, Pointer, Pointer)


class SessionManager:
    """It runs until close()."""

    def __init__(self, environment):
        self.process = start(
            [sys.executable, "-B", str(pathlib.Path(__file__))], environment,
            stdout=subprocess.PIPE,
        )
        self.addresses = self.process.stdout.readline().decode().strip()
        if not self.addresses:
            self.close()
            raise AssertionError("the session manager did not start")

    @property
    def path(self):
        """Of its socket."""
        return next(
            address.partition(":")[2] for address in self.addresses.split(",")
            if address.partition(":")[2].startswith("/")
        )

    def wait_for_client(self):
        self.process.stdout.readline()

    def close(self):
        stop(self.process)


class Library:
    """Of session managers, with its functions as they are declared."""

    def __init__(self):
        self.ice = ctypes.CDLL("libICE.so.6")
        self.sm = ctypes.CDLL("libSM.so.6")
        for function in (
            self.ice.IceAcceptConnection, self.ice.IceComposeNetworkIdList,
            self.sm.SmsGenerateClientID,
        ):
            function.restype = Pointer
        self.kept = []  # what it calls must stay

    def keep(self, callback):
        self.kept.append(callback)
        return callback

    def listen(self):
        """What it listens on, a list of theirs."""
        self.ice._IceTransNoListen(b"tcp")  # nobody comes from afar
        count = ctypes.c_int()
        listening = ctypes.POINTER(Pointer)()
        error = ctypes.create_string_buffer(ROOM)
        if not self.ice.IceListenForConnections(
            ctypes.byref(count), ctypes.byref(listening), ROOM, error
        ):
            raise OSError(error.value.decode())
        return [Pointer(listening[i]) for i in range(count.value)], count, listening


def on_client(library):
    def register(client, _data, before):
        if before:
            return 0  # nobody is known here
        library.sm.SmsRegisterClientReply(
            Pointer(client), Pointer(library.sm.SmsGenerateClientID(Pointer(client)))
        )
        print("client", flush=True)
        return 1

    registering = library.keep(OnRegister(register))
    nothing = library.keep(OnMessage(lambda *_: None))

    def come(_client, _data, mask, callbacks, _failure):
        mask[0] = ALL
        # Each with what it is given, which is nothing here.
        for i in range(10):
            chosen = registering if i == 0 else nothing
            callbacks[0][2 * i] = ctypes.cast(chosen, Pointer).value
            callbacks[0][2 * i + 1] = None
        return 1

    return library.keep(OnClient(come))


def serve():
    library = Library()
    ice = library.ice
    everybody = library.keep(HostBased(lambda _host: 1))
    ice.IceSetIOErrorHandler(library.keep(OnError(lambda _connection: None)))
    error = ctypes.create_string_buffer(ROOM)
    if not library.sm.SmsInitialize(
        b"tests", b"1", on_client(library), None, everybody, ROOM, error
    ):
        raise OSError(error.value.decode())
    listening, count, objects = library.listen()
    for each in listening:
        ice.IceSetHostBasedAuthProc(each, everybody)
    addresses = Text(ice.IceComposeNetworkIdList(count, objects))
    print(addresses.value.decode(), flush=True)
    doors = {ice.IceGetListenConnectionNumber(each): each for each in listening}
    guests = {}
    status = ctypes.c_int()
    while True:
        for number in select.select([*doors, *guests], [], [])[0]:
            if number in doors:
                guest = ice.IceAcceptConnection(doors[number], ctypes.byref(status))
                if guest:
                    guests[ice.IceConnectionNumber(Pointer(guest))] = Pointer(guest)
            elif ice.IceProcessMessages(guests[number], None, None) != 0:
                ice.IceCloseConnection(guests.pop(number))


if __name__ == "__main__":
    os.umask(0o077)
    serve()
