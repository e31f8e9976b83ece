// The one line that says what a camera is doing.

import { setText } from "./dom.js";
import { countText, durationText, numberText } from "./words.js";

const WORDS = {
    closed: "Closed",
    connecting: "Connecting",
    idle: "Ready",
    live: "Live",
    armed: "Waiting for the trigger",
    recording: "Recording",
    flash: "Copying to the flash card",
    downloading: "Downloading",
    lost: "Link lost",
};

const BUSY = new Set(["armed", "recording", "flash", "downloading"]);
const REPAINT_EVERY = 100; // ms, while the time runs

export class StateLine {
    #parts;
    #state = null;
    #since = 0; // when the newest state came

    constructor(parts) {
        this.#parts = parts;
        this.#timer = setInterval(() => this.#showProgress(), REPAINT_EVERY);
    }

    #timer;

    end() {
        clearInterval(this.#timer);
    }

    show(state) {
        this.#state = state;
        this.#since = performance.now();
        this.#parts.stateLine.dataset.state = state.state;
        setText(this.#parts.stateWord, WORDS[state.state] ?? state.state);
        setText(this.#parts.stateText, state.text);
        setText(this.#parts.announced, `${this.#parts.title.textContent}: ${WORDS[state.state] ?? state.state}`);
        this.#showProgress();
        this.#showFigures();
    }

    /** Time and frames; the time goes on between two messages. */
    #showProgress() {
        const { state, frames, of, elapsed } = this.#state ?? {};
        const texts = [];
        const isBusy = BUSY.has(state);
        if (isBusy && elapsed !== undefined) {
            texts.push(durationText(elapsed + (performance.now() - this.#since) / 1000));
        }
        if (isBusy && frames > 0) {
            texts.push(of > 0 ? `${numberText(frames)} of ${countText(of, "frame")}` : countText(frames, "frame"));
        }
        setText(this.#parts.progress, texts.join(" · "));
    }

    #showFigures() {
        const { fps, lost, megabitsPerSecond, temperature } = this.#state;
        const figure = (value, digits, unit) =>
            value === undefined || value === null ? "–" : `${numberText(value, digits)}${unit}`;
        setText(this.#parts.fps, figure(fps, 1, " /s"));
        setText(this.#parts.lost, figure(lost, 0, ""));
        this.#parts.lost.classList.toggle("bad", lost > 0);
        setText(this.#parts.rate, figure(megabitsPerSecond, 0, " Mb/s"));
        setText(this.#parts.temperature, figure(temperature, 1, " °C"));
    }
}
