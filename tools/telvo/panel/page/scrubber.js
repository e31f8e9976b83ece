// Gets recorded frames: always the newest that was asked for, one question at a time, so that a fast
// hand leaves no queue behind it.

/** Events: "frame" (detail: header and milliseconds from asking to the screen), "failure" (detail: why). */
export class Scrubber extends EventTarget {
    #card;
    #picture;
    #wanted = null; // {sequence, frame, at}
    #isAsking = false;
    shown = null; // {sequence, frame}

    constructor(card, picture) {
        super();
        this.#card = card;
        this.#picture = picture;
    }

    get isBusy() {
        return this.#isAsking;
    }

    get shows() {
        return this.#wanted ?? this.shown;
    }

    go(sequence, frame) {
        this.#wanted = { sequence, frame, at: performance.now() };
        return this.#work();
    }

    /** The same frame anew, for another view. */
    again() {
        if (this.shows !== null) {
            this.go(this.shows.sequence, this.shows.frame);
        }
    }

    forget() {
        this.#wanted = null;
        this.shown = null;
    }

    async #work() {
        if (this.#isAsking) {
            return;
        }
        this.#isAsking = true;
        try {
            while (this.#wanted !== null) {
                await this.#showNewest();
            }
        } catch (error) {
            this.#wanted = null;
            this.dispatchEvent(new CustomEvent("failure", { detail: error.message }));
        } finally {
            this.#isAsking = false;
        }
    }

    async #showNewest() {
        const wanted = this.#wanted;
        const { sequence, frame, at } = wanted;
        const { socket, camera } = this.#card;
        const answer = await socket.ask("frame", { camera, sequence, frame, ...this.#picture.wanted() });
        if (this.#wanted === null) { // live pictures or another recording came in between
            return;
        }
        if (this.#wanted === wanted) {
            this.#wanted = null;
        }
        this.shown = { sequence, frame };
        if (!await this.#picture.show(answer)) {
            return;
        }
        const detail = { header: answer.header, took: performance.now() - at };
        this.dispatchEvent(new CustomEvent("frame", { detail }));
    }
}
