"use strict";
// Shows the pictures that the panel sends, and says when it sends none. It sends nothing itself.

const texts = {
  en: { live: "live", connecting: "connecting ...", away: "no answer from the panel since %1" },
  de: { live: "live", connecting: "Verbindung wird aufgebaut ...",
        away: "keine Antwort vom Panel seit %1" },
  ru: { live: "в эфире", connecting: "соединение ...", away: "панель не отвечает с %1" },
};
const language = Object.keys(texts).find((key) => navigator.language.startsWith(key)) || "en";
document.documentElement.lang = language;

const patienceMs = 3000; // The panel speaks once a second at least.
const firstDelayMs = 1000;
const maxDelayMs = 10000;

const canvas = document.getElementById("panel");
const pen = canvas.getContext("2d");
const state = document.getElementById("state");

let lastHeard = 0; // When the panel last said that the picture is true; 0: never.
let clockOffset = Infinity; // From the panel's clock to ours, with the shortest delay that was seen.
let delayMs = firstDelayMs;
let drawing = Promise.resolve(); // Pieces are drawn in the order in which they came.

function showState() {
  const isLive = lastHeard > 0 && Date.now() - lastHeard < patienceMs;
  state.className = isLive ? "live" : "away";
  canvas.className = isLive ? "" : "away";
  state.textContent = isLive ? texts[language].live
    : lastHeard === 0 ? texts[language].connecting
    : texts[language].away.replace("%1", new Date(lastHeard).toLocaleTimeString(language));
}

function take(message) {
  const said = Date.parse(message.at);
  clockOffset = Math.min(clockOffset, Date.now() - said);
  if ("width" in message) {
    document.title = message.title;
    document.getElementById("title").textContent = message.title;
    canvas.setAttribute("aria-label", message.title);
    if (message.width > 0 &&
        (canvas.width !== message.width || canvas.height !== message.height)) {
      canvas.width = message.width;
      canvas.height = message.height;
    }
  } else {
    lastHeard = said + clockOffset; // On a slow line that may be a while ago.
    showState();
  }
}

async function draw(data) {
  const place = new DataView(data);
  const image = await createImageBitmap(new Blob([data.slice(4)], { type: "image/png" }));
  pen.drawImage(image, place.getUint16(0), place.getUint16(2));
  image.close();
}

function connect() {
  clockOffset = Infinity; // The clocks may have been set.
  const address = new URL("stream", location.href);
  address.protocol = location.protocol === "https:" ? "wss:" : "ws:";
  const socket = new WebSocket(address);
  socket.binaryType = "arraybuffer";
  socket.onmessage = (event) => {
    delayMs = firstDelayMs;
    drawing = drawing
      .then(() => typeof event.data === "string" ? take(JSON.parse(event.data)) : draw(event.data))
      .catch(() => socket.close());
  };
  socket.onclose = () => {
    setTimeout(connect, delayMs);
    delayMs = Math.min(2 * delayMs, maxDelayMs);
    showState();
  };
}

setInterval(showState, 500);
showState();
connect();
