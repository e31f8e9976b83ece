// Small pictures along a sequence, got one after the other while nothing else is asked for.

import { decodeImage } from "./image.js";

export const THUMBNAIL_WIDTH = 72; // CSS pixels
const PAUSE = 30; // ms before looking again whether the operator is done

/** Event: "change", after each picture. */
export class Thumbnails extends EventTarget {
    pictures = new Map(); // frame -> ImageBitmap
    frames = [];
    #card;
    #isBusy; // isBusy(): the operator waits for a frame
    #run = 0;

    constructor(card, isBusy) {
        super();
        this.#card = card;
        this.#isBusy = isBusy;
    }

    /** What is there stays. */
    stop() {
        this.#run += 1;
    }

    clear() {
        this.stop();
        this.pictures.forEach((bitmap) => bitmap.close());
        this.pictures.clear();
        this.frames = [];
        this.dispatchEvent(new Event("change"));
    }

    /** So many, evenly spread over the sequence; false: it was stopped or failed before the last one. */
    async fill(sequence, frames, count) {
        this.stop();
        const run = this.#run;
        this.frames = spread(frames, count);
        for (const frame of coarseFirst(this.frames)) {
            if (!this.pictures.has(frame)) {
                await this.#quiet();
                if (run !== this.#run || !await this.#get(sequence, frame)) {
                    return false;
                }
            }
        }
        return true;
    }

    async #quiet() {
        while (this.#isBusy()) {
            await new Promise((done) => setTimeout(done, PAUSE));
        }
    }

    async #get(sequence, frame) {
        const { socket, camera } = this.#card;
        const width = Math.ceil(THUMBNAIL_WIDTH * devicePixelRatio);
        const run = this.#run;
        try {
            const image = await decodeImage(await socket.ask("frame", { camera, sequence, frame, width, keep: true }));
            if (run === this.#run) {
                this.pictures.set(frame, image.bitmap);
                this.dispatchEvent(new Event("change"));
            }
            return true;
        } catch { // the camera does something else now; the next fill goes on
            return false;
        }
    }
}

function spread(frames, count) {
    const number = Math.max(1, Math.min(frames, count));
    return Array.from({ length: number }, (_, index) => Math.floor(((index + 0.5) * frames) / number));
}

/** Every eighth, then those between: the whole is seen early. */
function coarseFirst(frames) {
    return [8, 4, 2, 1].flatMap((step) => frames.filter((_, index) => index % step === 0));
}
