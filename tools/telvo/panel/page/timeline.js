// A sequence from its first to its last frame: thumbnails, brightness over time, the trigger, the marks,
// and where one is. A slider for mouse and keys.

import { Chart } from "./chart.js";
import { THUMBNAIL_WIDTH } from "./thumbnails.js";

const THUMBNAILS_SHARE = 0.5; // of the height; the curve has the rest
const PAGE = 10; // frames, for Page Up and Page Down
const DASH = 4; // CSS pixels, of the line of a trigger whose place is approximate

/** Event: "go" (detail: frame). */
export class Timeline extends EventTarget {
    #slider;
    #chart;
    #frames = 0;
    #frame = 0;
    #trigger = null; // {first, last, isApproximate}
    #curve = [];
    #thumbnails;
    #marks;

    constructor(slider, canvas, thumbnails, marks) {
        super();
        this.#slider = slider;
        this.#thumbnails = thumbnails;
        this.#marks = marks;
        this.#chart = new Chart(canvas, (...all) => this.#draw(...all));
        this.#listen();
        for (const source of [thumbnails, marks]) {
            source.addEventListener("change", () => this.#chart.redraw());
        }
    }

    /** How many thumbnails fit. */
    get room() {
        return Math.max(1, Math.round(this.#slider.clientWidth / THUMBNAIL_WIDTH));
    }

    setSequence(frames, trigger) {
        this.#frames = frames;
        this.#trigger = trigger;
        this.#curve = [];
        this.#slider.setAttribute("aria-valuemax", Math.max(0, frames - 1));
        this.#chart.redraw();
    }

    setFrame(frame, text) {
        this.#frame = frame;
        this.#slider.setAttribute("aria-valuenow", frame);
        this.#slider.setAttribute("aria-valuetext", text);
        this.#chart.redraw();
    }

    setCurve(points) {
        this.#curve = points;
        this.#chart.redraw();
    }

    #listen() {
        let isDown = false;
        this.#slider.addEventListener("pointerdown", (event) => {
            isDown = true;
            this.#slider.setPointerCapture(event.pointerId);
            this.#goTo(event);
        });
        this.#slider.addEventListener("pointermove", (event) => isDown && this.#goTo(event));
        for (const end of ["pointerup", "pointercancel"]) {
            this.#slider.addEventListener(end, () => { isDown = false; });
        }
        this.#slider.addEventListener("keydown", (event) => this.#onKey(event));
    }

    #goTo(event) {
        const box = this.#slider.getBoundingClientRect();
        this.#go(Math.floor(((event.clientX - box.left) / box.width) * this.#frames));
    }

    #onKey(event) {
        const step = event.shiftKey ? PAGE : 1;
        const to = {
            ArrowRight: this.#frame + step, ArrowUp: this.#frame + step,
            ArrowLeft: this.#frame - step, ArrowDown: this.#frame - step,
            PageUp: this.#frame + PAGE, PageDown: this.#frame - PAGE,
            Home: 0, End: this.#frames - 1,
        }[event.key];
        if (to !== undefined) {
            event.preventDefault();
            event.stopPropagation();
            this.#go(to);
        }
    }

    #go(frame) {
        const detail = Math.max(0, Math.min(this.#frames - 1, frame));
        this.#frame = detail; // keys that come faster than pictures go on from here
        this.dispatchEvent(new CustomEvent("go", { detail }));
    }

    #draw(context, width, height, colours) {
        if (this.#frames === 0) {
            return;
        }
        const at = (frame) => (frame * width) / this.#frames;
        this.#drawThumbnails(context, width, height * THUMBNAILS_SHARE);
        this.#drawCurve(context, at, height * THUMBNAILS_SHARE, height, colours);
        this.#drawMarks(context, at, width, height, colours);
        this.#drawTrigger(context, at, height, colours);
        this.#drawPlace(context, at, height, colours);
    }

    #drawThumbnails(context, width, height) {
        const { frames, pictures } = this.#thumbnails;
        const cell = width / Math.max(1, frames.length);
        context.fillStyle = "#101317";
        context.fillRect(0, 0, width, height);
        frames.forEach((frame, index) => {
            const bitmap = pictures.get(frame);
            if (bitmap !== undefined) {
                const scale = Math.max(cell / bitmap.width, height / bitmap.height); // covers its cell
                const [w, h] = [cell / scale, height / scale];
                context.drawImage(bitmap, (bitmap.width - w) / 2, (bitmap.height - h) / 2, w, h,
                    index * cell, 0, cell - 1, height);
            }
        });
    }

    #drawCurve(context, at, top, bottom, colours) {
        if (this.#curve.length === 0) {
            return;
        }
        const means = this.#curve.map(({ mean }) => mean);
        const least = Math.min(...means);
        const span = Math.max(1, Math.max(...means) - least);
        const room = bottom - top - 10;
        context.strokeStyle = colours.accent;
        context.lineWidth = 1.5;
        context.beginPath();
        for (const { frame, mean } of this.#curve) {
            context.lineTo(at(frame + 0.5), bottom - 5 - ((mean - least) / span) * room);
        }
        context.stroke();
    }

    #drawMarks(context, at, width, height, colours) {
        const [from, to] = [at(this.#marks.first), at(this.#marks.last + 1)];
        context.fillStyle = "rgba(10, 12, 15, 0.45)";
        context.fillRect(0, 0, from, height);
        context.fillRect(to, 0, width - to, height);
        if (!this.#marks.isWhole) {
            context.fillStyle = colours.good;
            context.fillRect(from, 0, 2, height);
            context.fillRect(to - 2, 0, 2, height);
        }
    }

    #drawTrigger(context, at, height, colours) {
        if (this.#trigger !== null) {
            const [from, to] = [at(this.#trigger.first), at(this.#trigger.last)];
            context.fillStyle = colours.alarm;
            for (const [top, length] of this.#trigger.isApproximate ? dashes(height) : [[0, height]]) {
                context.fillRect(from - 1, top, Math.max(2, to - from), length);
            }
            context.beginPath();
            context.moveTo((from + to) / 2 - 6, 0);
            context.lineTo((from + to) / 2 + 6, 0);
            context.lineTo((from + to) / 2, 8);
            context.fill();
        }
    }

    #drawPlace(context, at, height, colours) {
        const x = at(this.#frame + 0.5);
        context.fillStyle = "rgba(0, 0, 0, 0.7)";
        context.fillRect(x - 2.5, 0, 5, height);
        context.fillStyle = colours.warn;
        context.fillRect(x - 1, 0, 2, height);
    }
}

/** [top, length] of the pieces of a broken line. */
function dashes(height) {
    return Array.from({ length: Math.ceil(height / (2 * DASH)) }, (_, index) => [2 * DASH * index, DASH]);
}
