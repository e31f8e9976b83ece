// Looking through what the camera holds: sequences, the timeline, playing, marks, what is known of a frame.

import { element, setText } from "./dom.js";
import { Marks } from "./marks.js";
import { Playback } from "./playback.js";
import { Scrubber } from "./scrubber.js";
import { Thumbnails } from "./thumbnails.js";
import { Timeline } from "./timeline.js";
import { countText, numberText, relativeTimeText } from "./words.js";

const CURVE_POINTS = 160;

/** Events: "frame" (detail: its header), "sequence". */
export class Review extends EventTarget {
    marks = new Marks();
    sequence = null; // the row of the one that is looked at
    #card;
    #parts;
    #sequences = [];
    #known = "";
    #scrubber;
    #thumbnails;
    #timeline;
    #playback;
    #frame = 0;

    constructor(card, parts, picture) {
        super();
        this.#card = card;
        this.#parts = parts;
        this.#scrubber = new Scrubber(card, picture);
        this.#thumbnails = new Thumbnails(card, () => this.#scrubber.isBusy || this.#playback.isOn);
        this.#timeline = new Timeline(parts.timeline, parts.timelineCanvas, this.#thumbnails, this.marks);
        this.#playback = new Playback((frame) => this.#show(frame), () => this.marks,
            () => Number(parts.playRate.value) || 1);
        this.#listen(picture);
    }

    /** A recording has a number, since two may look alike. */
    setSequences(sequences, recording) {
        const known = JSON.stringify([recording, sequences]);
        if (known === this.#known) {
            return;
        }
        this.#known = known;
        this.#sequences = sequences.filter(({ frames }) => frames > 0);
        this.#parts.review.hidden = this.#sequences.length === 0;
        this.#makeChoice();
        this.#choose(this.#sequences[0] ?? null);
    }

    setCurve({ sequence, points }) {
        if (sequence === this.sequence?.sequence) {
            this.#timeline.setCurve(points);
        }
    }

    /** Live pictures take the place of the frame. */
    leave() {
        this.stopPlaying();
        this.#scrubber.forget();
        this.#thumbnails.stop();
    }

    stopPlaying() {
        this.#playback.stop();
        this.#showPlaying();
    }

    go(frame) {
        this.stopPlaying();
        return this.#show(frame);
    }

    step(by) {
        this.go(this.#frame + by);
    }

    togglePlaying() {
        if (this.#playback.isOn) {
            this.stopPlaying();
        } else if (this.sequence !== null) {
            this.#playback.start(this.#frame);
            this.#showPlaying();
        }
    }

    /** Small pictures and brightness, once the operator looks at frames anyway. */
    async #explore() {
        this.#isExplored = true;
        const hasCurve = this.#askForCurve();
        const { sequence, frames } = this.sequence;
        const hasThumbnails = await this.#thumbnails.fill(sequence, frames, this.#timeline.room);
        this.#isExplored = await hasCurve && hasThumbnails; // else the next frame tries again
    }

    async #askForCurve() {
        const { socket, camera } = this.#card;
        const { sequence } = this.sequence;
        try {
            this.setCurve({ sequence, ...await socket.ask("curve", { camera, sequence, points: CURVE_POINTS }) });
            return true;
        } catch { // the camera does something else now
            return false;
        }
    }

    #isExplored = false;

    #listen(picture) {
        const parts = this.#parts;
        const clicks = {
            toFirst: () => this.go(this.marks.first), toLast: () => this.go(this.marks.last),
            stepBack: () => this.step(-1), stepOn: () => this.step(1),
            toTrigger: () => this.go(this.#trigger().last), play: () => this.togglePlaying(),
            markIn: () => this.marks.markIn(this.#frame), markOut: () => this.marks.markOut(this.#frame),
            markAll: () => this.marks.reset(this.sequence.frames),
        };
        for (const [name, act] of Object.entries(clicks)) {
            parts[name].addEventListener("click", act);
        }
        this.#timeline.addEventListener("go", ({ detail }) => this.go(detail));
        this.#scrubber.addEventListener("frame", ({ detail }) => this.#onFrame(detail));
        this.#scrubber.addEventListener("failure", ({ detail }) => this.#onFailure(detail));
        this.marks.addEventListener("change", () => this.#showMarks());
        picture.addEventListener("view", () => this.#scrubber.again());
        parts.frameNumber.addEventListener("change", () => this.go(Number(parts.frameNumber.value) || 0));
    }

    #makeChoice() {
        const buttons = this.#sequences.map((row) => this.#choiceOf(row));
        this.#parts.sequences.replaceChildren(...buttons);
        this.#parts.sequences.hidden = buttons.length < 2;
    }

    #choiceOf(row) {
        const bar = element("span", { class: "sequence-bar", "aria-hidden": "true" });
        const trigger = boundsOf(row.trigger);
        if (trigger !== null) {
            const mark = element("span", {});
            mark.style.left = `${(100 * trigger.last) / row.frames}%`;
            bar.append(mark);
        }
        return element("button", { type: "button", "data-sequence": row.sequence, onclick: () => this.#choose(row) },
            element("span", {}, `Sequence ${row.sequence}`), bar,
            element("small", {}, countText(row.frames, "frame")));
    }

    #choose(row) {
        this.leave();
        this.sequence = row;
        this.#frame = 0;
        this.#isExplored = false;
        this.#thumbnails.clear();
        this.marks.reset(row?.frames ?? 0);
        this.#timeline.setSequence(row?.frames ?? 0, this.#trigger());
        this.#parts.toTrigger.disabled = this.#trigger() === null;
        for (const button of this.#parts.sequences.children) {
            button.setAttribute("aria-pressed", Number(button.dataset.sequence) === row?.sequence);
        }
        setText(this.#parts.frameCount, row === null ? "" : `of ${numberText(row.frames)}`);
        setText(this.#parts.frameFacts, row === null ? "" : recordedText(row));
        this.dispatchEvent(new Event("sequence"));
        if (row !== null && this.#card.isIdle) { // else looking at a frame would end what it does
            this.#show(this.#trigger()?.last ?? 0);
        }
    }

    #trigger() {
        return boundsOf(this.sequence?.trigger);
    }

    #show(frame) {
        const inside = Math.max(0, Math.min(this.sequence.frames - 1, frame));
        this.#frame = inside;
        return this.#scrubber.go(this.sequence.sequence, inside);
    }

    #onFrame({ header, took }) {
        if (!this.#playback.isOn) {
            this.#frame = this.#scrubber.shows?.frame ?? header.number;
        }
        if (document.activeElement !== this.#parts.frameNumber) {
            this.#parts.frameNumber.value = header.number;
        }
        const facts = factsOf(header);
        this.#timeline.setFrame(header.number, `frame ${header.number}${facts === "" ? "" : `, ${facts}`}`);
        setText(this.#parts.frameFacts, facts);
        setText(this.#parts.frameTook, `${numberText(took)} ms`);
        this.dispatchEvent(new CustomEvent("frame", { detail: header }));
        if (!this.#isExplored) {
            this.#explore();
        }
    }

    #onFailure(text) {
        this.stopPlaying();
        this.#card.notices.failure(text);
    }

    #showPlaying() {
        this.#parts.play.setAttribute("aria-pressed", this.#playback.isOn);
        setText(this.#parts.playWord, this.#playback.isOn ? "Pause" : "Play");
    }

    #showMarks() {
        const { first, last, count, isWhole } = this.marks;
        setText(this.#parts.marked, isWhole ? `all ${countText(count, "frame")} marked`
            : `${countText(count, "frame")} marked, ${first} to ${last}`);
    }
}

/** The frames between which the trigger lies; null: there is none. */
function boundsOf(trigger) {
    if (trigger === null || trigger === undefined) {
        return null;
    }
    return typeof trigger === "number" ? { first: trigger, last: trigger } : trigger;
}

function recordedText({ frames, fps }) {
    return fps > 0 ? `${countText(frames, "frame")}, ${numberText(fps, 1)} frames/s` : countText(frames, "frame");
}

function factsOf({ timeFromTrigger, counter, flags, mean }) {
    const facts = [];
    if (timeFromTrigger !== undefined) {
        facts.push(`${relativeTimeText(timeFromTrigger / 1e6)} from the trigger`);
    }
    facts.push(`counter ${counter}`);
    if (flags?.length > 0) {
        facts.push(flags.join(", "));
    }
    facts.push(`mean ${numberText(mean, 1)}`);
    return facts.join(" · ");
}
