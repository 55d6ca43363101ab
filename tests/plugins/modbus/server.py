"""A Modbus server for the tests: server.py tcp|rtu PORT.

Writes "ready", then a line for each request: its function, address and count or values. Reads lines such as
"h 100 215 7", which set values of a table (c, d, i, h) from an address on. Addresses end at 299. Holding register
150 is one that it refuses to read together with others, as servers do whose map has holes.
"""
import asyncio
import sys
import threading
from unittest import mock

# pymodbus imports them even where it serves no serial port.
sys.modules["serial"] = sys.modules["serial_asyncio"] = mock.MagicMock()

from pymodbus.datastore import ModbusSequentialDataBlock, ModbusServerContext, ModbusSlaveContext
from pymodbus.server import StartAsyncTcpServer
from pymodbus.transaction import ModbusRtuFramer, ModbusSocketFramer

SIZE = 300


def say(*words):
    sys.stdout.write(" ".join(str(word) for word in words) + "\n")  # At once: two threads write.
    sys.stdout.flush()


class Tables(ModbusSlaveContext):
    def validate(self, function, address, count=1):
        isHole = function == 3 and count > 1 and address <= 150 < address + count
        isThere = not isHole and address + count <= SIZE
        if not isThere:
            say("refused", function, address, count)
        return isThere

    def getValues(self, function, address, count=1):
        if function in (1, 2, 3, 4):
            say("read", function, address, count)
        return super().getValues(function, address, count)

    def setValues(self, function, address, values):
        say("write", function, address, *(int(value) for value in values))
        super().setValues(function, address, values)


def block():
    return ModbusSequentialDataBlock(0, [0] * SIZE)


tables = Tables(di=block(), co=block(), hr=block(), ir=block(), zero_mode=True)


def obey():
    for line in sys.stdin:
        table, address, *values = line.split()
        tables.store[table].setValues(int(address), [int(value) for value in values])
        say("set")


async def serve():
    framer = ModbusRtuFramer if sys.argv[1] == "rtu" else ModbusSocketFramer
    context = ModbusServerContext(slaves={7: tables}, single=False)
    server = await StartAsyncTcpServer(context, framer=framer, address=("127.0.0.1", int(sys.argv[2])), defer_start=True,
                                       allow_reuse_address=True)
    threading.Thread(target=obey, daemon=True).start()
    asyncio.get_running_loop().call_later(0.05, say, "ready")
    await server.serve_forever()


asyncio.run(serve())
