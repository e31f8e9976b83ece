// The one connection to the program: questions with answers, events, and pictures.

const FIRST_PAUSE = 250; // ms before the first try to reconnect
const LONGEST_PAUSE = 2000;

/** A binary message: a header in JSON behind its length, then the picture's bytes. */
export function decodePicture(buffer) {
    const length = new DataView(buffer).getUint32(0);
    const text = new TextDecoder().decode(new Uint8Array(buffer, 4, length));
    return { header: JSON.parse(text), body: new Uint8Array(buffer, 4 + length) };
}

/**
 * Events: "up", "down" (detail: whether it will try again), "event" (detail: the message),
 * "picture" (detail: {header, body}).
 */
export class Socket extends EventTarget {
    #url;
    #socket = null;
    #lastId = 0;
    #waiting = new Map(); // id -> {resolve, reject}
    #pause = FIRST_PAUSE;

    constructor(url) {
        super();
        this.#url = url;
    }

    open() {
        const socket = new WebSocket(this.#url);
        socket.binaryType = "arraybuffer";
        socket.addEventListener("open", () => this.#onOpen());
        socket.addEventListener("message", ({ data }) => this.#onMessage(data));
        socket.addEventListener("close", () => this.#onClose());
        this.#socket = socket;
    }

    get isUp() {
        return this.#socket !== null && this.#socket.readyState === WebSocket.OPEN;
    }

    /** The answer's fields, or {header, body} for a picture; rejected with what went wrong. */
    ask(what, values = {}) {
        if (!this.isUp) {
            return Promise.reject(new Error("The panel's program does not answer."));
        }
        this.#lastId += 1;
        const id = this.#lastId;
        this.#socket.send(JSON.stringify({ id, do: what, ...values }));
        return new Promise((resolve, reject) => this.#waiting.set(id, { resolve, reject }));
    }

    #onOpen() {
        this.#pause = FIRST_PAUSE;
        this.dispatchEvent(new Event("up"));
    }

    #onMessage(data) {
        if (data instanceof ArrayBuffer) {
            this.#onPicture(decodePicture(data));
            return;
        }
        const message = JSON.parse(data);
        if (message.event === undefined) {
            this.#onAnswer(message);
        } else {
            this.dispatchEvent(new CustomEvent("event", { detail: message }));
        }
    }

    #onPicture(picture) {
        if (picture.header.id === undefined) {
            this.dispatchEvent(new CustomEvent("picture", { detail: picture }));
        } else {
            this.#take(picture.header.id)?.resolve(picture);
        }
    }

    #onAnswer(message) {
        const waiting = this.#take(message.id);
        if (message.ok) {
            waiting?.resolve(message);
        } else {
            waiting?.reject(new Error(message.error));
        }
    }

    #take(id) {
        const waiting = this.#waiting.get(id);
        this.#waiting.delete(id);
        return waiting;
    }

    #onClose() {
        for (const { reject } of this.#waiting.values()) {
            reject(new Error("The connection to the panel's program was lost."));
        }
        this.#waiting.clear();
        this.dispatchEvent(new Event("down"));
        setTimeout(() => this.open(), this.#pause);
        this.#pause = Math.min(2 * this.#pause, LONGEST_PAUSE);
    }
}
