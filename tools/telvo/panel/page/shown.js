// What the picture on a card is: live or recorded, and the figures that belong to it.

import { setText } from "./dom.js";
import { Focus } from "./focus.js";
import { Histogram } from "./histogram.js";
import { numberText } from "./words.js";

export class Shown {
    #picture;
    #parts;
    #histogram;
    #focus;

    constructor(picture, parts) {
        this.#picture = picture;
        this.#parts = parts;
        this.#histogram = new Histogram(parts.histogram, parts.histogramWords);
        this.#focus = new Focus(parts.focus, parts.focusWords);
        parts.focusReset.addEventListener("click", () => this.#focus.reset());
    }

    showLive({ header, latency }) {
        this.#show("LIVE", latency === null ? "–" : `${numberText(latency)} ms`, header);
        this.#picture.describe(`Live picture ${header.number}, ${header.pictureWidth} by ${header.pictureHeight} pixels`);
        this.#focus.add(header.focus);
    }

    showRecorded(header) {
        this.#show("RECORDED", "–", header);
        this.#picture.describe(`Recorded frame ${header.number} of sequence ${header.sequence}`);
    }

    /** No more live pictures come; the last one stays. */
    endLive() {
        if (this.#parts.shownWhat.textContent === "LIVE") {
            setText(this.#parts.shownWhat, "LAST PICTURE");
        }
    }

    #show(what, latency, header) {
        setText(this.#parts.shownWhat, what);
        setText(this.#parts.latency, latency);
        this.#parts.noPicture.hidden = true;
        this.#parts.frame.dataset.number = header.number;
        this.#histogram.show(header);
    }
}
