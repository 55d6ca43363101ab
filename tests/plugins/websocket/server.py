#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""A WebSocket server that a test drives by lines: commands on standard input, news on standard output.

server.py PORT [CERTIFICATE KEY]; ends with its standard input.
"""
import asyncio
import os
import ssl
import sys

import websockets

clients = set()


def tell(text):
    print(text, flush=True)


async def serve(client):
    clients.add(client)
    tell("open " + client.request_headers.get("X-Key", ""))
    try:
        async for message in client:
            tell("got " + message)
    except websockets.ConnectionClosed:
        pass
    clients.discard(client)
    tell("closed")


async def check(path, headers):
    tell("asked " + path)
    if path.startswith("/refused"):
        return (403, [], b"no\n")
    if path == "/hangs":
        await asyncio.sleep(1000)


async def flood(rate, seconds):
    loop = asyncio.get_running_loop()
    start = loop.time()
    sent = 0
    while sent < rate * seconds:
        due = min(int((loop.time() - start) * rate), rate * seconds)
        while sent < due:
            sent += 1
            for client in clients:
                await client.send('{"value":%d}' % sent)
        await asyncio.sleep(0.001)
    tell("flooded")


async def obey(line):
    command, _, rest = line.partition(" ")
    if command == "flood":
        rate, seconds = rest.split()
        await flood(int(rate), int(seconds))
    for client in list(clients):
        if command == "send":
            await client.send(rest)
        elif command == "binary":
            await client.send(b"\x00" * int(rest))
        elif command == "huge":
            await client.send('"' + "x" * int(rest) + '"')
        elif command == "fragments":
            await client.send(rest.split())
        elif command == "close":
            code, _, reason = rest.partition(" ")
            await client.close(int(code), reason)
        elif command == "garbage":
            client.transport.write(b"\xff\xff\xff garbage")
        elif command == "cut":
            client.transport.abort()


async def main():
    context = None
    if len(sys.argv) > 3:
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(sys.argv[2], sys.argv[3])
    async with websockets.serve(serve, "127.0.0.1", int(sys.argv[1]), ssl=context, compression=None,
                                ping_interval=None, process_request=check, max_size=None,
                                max_queue=None):
        tell("ready")
        while True:
            line = await asyncio.to_thread(sys.stdin.readline)
            if not line:
                os._exit(0)
            try:
                await obey(line.rstrip("\n"))
            except websockets.ConnectionClosed:
                pass


asyncio.run(main())
