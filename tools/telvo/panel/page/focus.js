// How sharp the picture is: its edge energy over time, against the best that was seen.

import { Chart } from "./chart.js";
import { setText } from "./dom.js";
import { numberText } from "./words.js";

const SPAN = 20000; // ms that are shown
const HEADROOM = 1.08; // above the best value

export class Focus {
    #points = []; // {time, energy}
    #best = 0;
    #chart;
    #words;

    constructor(canvas, words) {
        this.#words = words;
        this.#chart = new Chart(canvas, (...all) => this.#draw(...all));
    }

    add(energy) {
        const now = performance.now();
        this.#points.push({ time: now, energy });
        while (this.#points[0].time < now - SPAN) {
            this.#points.shift();
        }
        this.#best = Math.max(this.#best, energy);
        const share = this.#best > 0 ? (100 * energy) / this.#best : 0;
        setText(this.#words, `${numberText(share)} % of the best`);
        this.#chart.redraw();
    }

    reset() {
        this.#points = [];
        this.#best = 0;
        setText(this.#words, "");
        this.#chart.redraw();
    }

    #draw(context, width, height, colours) {
        if (this.#points.length === 0) {
            return;
        }
        const last = this.#points.at(-1).time;
        const scale = height / (this.#best * HEADROOM || 1);
        context.strokeStyle = colours.faint;
        context.setLineDash([4, 4]);
        this.#line(context, [[0, height - this.#best * scale], [width, height - this.#best * scale]]);
        context.setLineDash([]);
        context.strokeStyle = colours.accent;
        context.lineWidth = 2;
        this.#line(context, this.#points.map(({ time, energy }) =>
            [width - ((last - time) / SPAN) * width, height - energy * scale]));
    }

    #line(context, points) {
        context.beginPath();
        points.forEach(([x, y]) => context.lineTo(x, y));
        context.stroke();
    }
}
