// Over a picture that is no longer what the camera sees, with the reason.

import { setText } from "./dom.js";
import { clockText } from "./words.js";

export class Veil {
    #parts;
    #lostSince = null;

    constructor(parts) {
        this.#parts = parts;
    }

    setLost(isLost) {
        if (isLost === (this.#lostSince !== null)) {
            return;
        }
        this.#lostSince = isLost ? new Date() : null;
        this.#show(isLost ? `Link lost since ${clockText(this.#lostSince)}. Trying to connect again; ` +
            "the picture is the last one that came." : "");
    }

    /** Since when no live picture has come; null: they come. */
    setSilence(since) {
        if (this.#lostSince === null) {
            this.#show(since === null ? "" : `No picture since ${clockText(since)}`);
        }
    }

    #show(text) {
        setText(this.#parts.veilText, text);
        this.#parts.veil.hidden = text === "";
    }
}
