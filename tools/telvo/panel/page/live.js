// Live pictures of one camera: asks for what the view shows, shows what comes, and tells the program
// when a picture has been seen, which is its leave to send the next.

import { afterQuiet } from "./dom.js";

const VIEW_PAUSE = 60; // ms without a change of the view before the program hears of it
const SILENCE = 2000; // ms without a picture that the operator is told of
const WATCH_EVERY = 500;
const LONGEST_LATENCY = 10000; // ms; beyond it the two clocks differ

/** Events: "picture" (detail: its header and latency in ms or null), "silence" (detail: since when no picture came, or null). */
export class Live extends EventTarget {
    #socket;
    #camera;
    #picture;
    #isOn = false;
    #last = 0;
    #askAgain = afterQuiet(VIEW_PAUSE, () => this.askForView());

    constructor(socket, camera, picture) {
        super();
        this.#socket = socket;
        this.#camera = camera;
        this.#picture = picture;
        this.#listen();
    }

    /** Whether live pictures are to be expected. */
    setOn(isOn) {
        if (isOn !== this.#isOn) {
            this.#isOn = isOn;
            this.#last = performance.now();
            this.#tell("silence", null);
        }
    }

    askForView() {
        const view = this.#picture.wanted();
        this.#socket.ask("preview", { camera: this.#camera, ...view }).catch(() => {}); // asked anew when it is back
    }

    end() {
        this.#ended.abort();
        clearInterval(this.#watch);
    }

    #ended = new AbortController();
    #watch = setInterval(() => this.#lookForSilence(), WATCH_EVERY);

    #listen() {
        const { signal } = this.#ended;
        this.#socket.addEventListener("picture", ({ detail }) => this.#take(detail), { signal });
        this.#picture.addEventListener("view", () => this.#askAgain(), { signal });
    }

    async #take(message) {
        const { header } = message;
        if (header.camera !== this.#camera || header.kind !== "live") {
            return;
        }
        try {
            await this.#showIfOn(message);
        } finally { // a picture that cannot be shown does not stop the others
            this.#socket.ask("seen", { camera: this.#camera, number: header.number }).catch(() => {});
        }
    }

    async #showIfOn(message) {
        if (!this.#isOn) {
            return;
        }
        if (!await this.#picture.show(message) || !this.#isOn) {
            return;
        }
        this.#last = performance.now();
        const latency = Date.now() - message.header.captured;
        const isPlausible = latency >= 0 && latency < LONGEST_LATENCY;
        this.#tell("picture", { header: message.header, latency: isPlausible ? latency : null });
        this.#tell("silence", null);
    }

    #lookForSilence() {
        const silence = performance.now() - this.#last;
        if (this.#isOn && silence > SILENCE) {
            this.#tell("silence", new Date(Date.now() - silence));
        }
    }

    #tell(name, detail) {
        this.dispatchEvent(new CustomEvent(name, { detail }));
    }
}
