#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Plays the bridge to a robot, protocol 2.0: rosbridge.py PORT; ends with its standard input.

A line "topic NAME JSON" on standard input publishes, other lines are sent as they are. What the panel sends is
written on standard output.
"""
import asyncio
import json
import os
import sys

import websockets

subscribers = {}
clients = set()


async def obey(client, advertised, request):
    operation, topic = request["op"], request.get("topic")
    if operation == "subscribe":
        subscribers.setdefault(topic, set()).add(client)
    elif operation == "unsubscribe":
        subscribers[topic].discard(client)
    elif operation == "advertise":
        advertised[topic] = request["type"]
    elif operation == "publish" and topic not in advertised:
        await client.send(json.dumps({"op": "status", "level": "error", "msg": topic + " is not advertised"}))


async def serve(client):
    advertised = {}
    clients.add(client)
    try:
        async for message in client:
            print(message, flush=True)
            await obey(client, advertised, json.loads(message))
    except websockets.ConnectionClosed:
        pass
    clients.discard(client)
    for some in subscribers.values():
        some.discard(client)
    print("closed", flush=True)


async def main():
    async with websockets.serve(serve, "127.0.0.1", int(sys.argv[1])):
        print("ready", flush=True)
        while line := await asyncio.to_thread(sys.stdin.readline):
            if line.startswith("topic "):
                _, topic, text = line.split(" ", 2)
                message = json.dumps({"op": "publish", "topic": topic, "msg": json.loads(text)})
                for client in list(subscribers.get(topic, ())):
                    await client.send(message)
            else:
                for client in list(clients):
                    await client.send(line.strip())
        os._exit(0)


asyncio.run(main())
