#!/usr/bin/python3
"""Opens a page in a headless browser and answers what is asked of it on standard input.

browse.py BROWSER URL WIDTH HEIGHT, then one expression of JavaScript in a line each; what it comes to
is written as a line of JSON. The line "screenshot FILE" writes a picture of the page instead.
"""

import asyncio
import base64
import json
import re
import subprocess
import sys
import tempfile
import urllib.request

import websockets


class Page:
    def __init__(self, socket):
        self.socket = socket
        self.number = 0

    async def call(self, method, **params):
        self.number += 1
        await self.socket.send(
            json.dumps({"id": self.number, "method": method, "params": params})
        )
        while True:
            answer = json.loads(await self.socket.recv())
            if answer.get("id") == self.number:
                return answer.get("result", answer)


async def serve(port, url, width, height):
    with urllib.request.urlopen(f"http://127.0.0.1:{port}/json/list") as tabs:
        target = next(tab for tab in json.load(tabs) if tab["type"] == "page")
    async with websockets.connect(
        target["webSocketDebuggerUrl"], max_size=None
    ) as socket:
        page = Page(socket)
        await page.call(
            "Emulation.setDeviceMetricsOverride",
            width=width, height=height, deviceScaleFactor=1, mobile=width < 600,
        )
        await page.call("Page.navigate", url=url)
        loop = asyncio.get_running_loop()
        while line := (await loop.run_in_executor(None, sys.stdin.readline)).strip():
            if line.startswith("screenshot "):
                shot = await page.call("Page.captureScreenshot")
                with open(line.split(" ", 1)[1], "wb") as picture:
                    picture.write(base64.b64decode(shot["data"]))
                value = True
            else:
                result = await page.call(
                    "Runtime.evaluate", expression=line, returnByValue=True, awaitPromise=True
                )
                value = result.get("result", result).get("value", None)
            print(json.dumps(value), flush=True)


def main():
    browser, url, width, height = sys.argv[1:5]
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as profile:
        process = subprocess.Popen(
            [browser, "--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
             "--ignore-certificate-errors", "--no-first-run", "--disable-background-networking",
             "--remote-debugging-port=0", f"--user-data-dir={profile}", "about:blank"],
            stderr=subprocess.PIPE, stdout=subprocess.DEVNULL, text=True,
        )
        try:
            for line in process.stderr:
                if found := re.search(r"ws://127\.0\.0\.1:(\d+)/", line):
                    asyncio.run(serve(found[1], url, int(width), int(height)))
                    break
        finally:
            process.kill()
            process.wait()


main()
