// How many pixels have which grey value, and how many are clipped at either end.

import { Chart } from "./chart.js";
import { setText } from "./dom.js";
import { numberText, shareText } from "./words.js";

const CLIPPED_FROM = 0.001; // share of the pixels from which an end counts as clipped
const MARK_WIDTH = 4;

export class Histogram {
    #header = null;
    #chart;
    #words;

    constructor(canvas, words) {
        this.#words = words;
        this.#chart = new Chart(canvas, (...all) => this.#draw(...all));
    }

    show(header) {
        this.#header = header;
        this.#chart.redraw();
        const pixels = header.pictureWidth * header.pictureHeight;
        setText(this.#words, `mean ${numberText(header.mean, 1)} · black ${shareText(header.clippedLow, pixels)}` +
            ` · white ${shareText(header.clippedHigh, pixels)}`);
    }

    #draw(context, width, height, colours) {
        if (this.#header === null) {
            return;
        }
        const { histogram, clippedLow, clippedHigh, pictureWidth, pictureHeight } = this.#header;
        const bar = width / histogram.length;
        // The ends are left out: a clipped background would flatten all else.
        const most = Math.sqrt(Math.max(1, ...histogram.slice(1, -1)));
        context.fillStyle = colours.ink;
        histogram.forEach((count, value) => {
            const size = Math.min(1, Math.sqrt(count) / most) * (height - 2);
            context.fillRect(value * bar, height - size, Math.max(bar, 0.75), size);
        });
        const enough = CLIPPED_FROM * pictureWidth * pictureHeight;
        context.fillStyle = colours.alarm;
        if (clippedLow > enough) {
            context.fillRect(0, 0, MARK_WIDTH, height);
        }
        if (clippedHigh > enough) {
            context.fillRect(width - MARK_WIDTH, 0, MARK_WIDTH, height);
        }
    }
}
