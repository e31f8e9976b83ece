// Looking through what the camera holds: sequences, the timeline, playing, marks, what is known of a frame.

import { setText } from "./dom.js";
import { Marks } from "./marks.js";
import { Playback } from "./playback.js";
import { factsOf, recordedText, triggerOf } from "./recording.js";
import { Scrubber } from "./scrubber.js";
import { SequenceList } from "./sequences.js";
import { Thumbnails } from "./thumbnails.js";
import { Timeline } from "./timeline.js";
import { countText, numberText } from "./words.js";

const CURVE_POINTS = 160;

/** Events: "frame" (detail: its header), "sequence". */
export class Review extends EventTarget {
    marks = new Marks();
    sequence = null; // the row of the one that is looked at
    #card;
    #parts;
    #sequences = [];
    #known = "";
    #list;
    #scrubber;
    #thumbnails;
    #timeline;
    #playback;
    #frame = 0;

    constructor(card, parts, picture) {
        super();
        this.#card = card;
        this.#parts = parts;
        this.#list = new SequenceList(parts.sequences, (row) => this.#choose(row));
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
        this.#list.show(this.#sequences);
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

    #choose(row) {
        this.leave();
        this.sequence = row;
        this.#frame = 0;
        this.#isExplored = false;
        this.#thumbnails.clear();
        this.marks.reset(row?.frames ?? 0);
        this.#timeline.setSequence(row?.frames ?? 0, this.#trigger());
        this.#parts.toTrigger.disabled = this.#trigger() === null;
        this.#list.mark(row);
        setText(this.#parts.frameCount, row === null ? "" : `of ${numberText(row.frames)}`);
        setText(this.#parts.frameFacts, row === null ? "" : recordedText(row));
        this.dispatchEvent(new Event("sequence"));
        if (row !== null && this.#card.isIdle) { // else looking at a frame would end what it does
            this.#show(this.#trigger()?.last ?? 0);
        }
    }

    #trigger() {
        return triggerOf(this.sequence);
    }

    #show(frame) {
        const inside = Math.max(0, Math.min(this.sequence.frames - 1, frame));
        this.#frame = inside;
        return this.#scrubber.go(this.sequence.sequence, inside);
    }

    #onFrame({ header, took }) {
        const place = this.#scrubber.shows?.frame ?? header.number; // the keys may be ahead of the picture
        if (!this.#playback.isOn) {
            this.#frame = place;
        }
        if (document.activeElement !== this.#parts.frameNumber) {
            this.#parts.frameNumber.value = header.number;
        }
        const facts = factsOf(header);
        this.#timeline.setFrame(place, `frame ${header.number}${facts === "" ? "" : `, ${facts}`}`);
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
