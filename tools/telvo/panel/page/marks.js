// The range of frames that is marked, for playing and downloading; both ends belong to it.

/** Event: "change". */
export class Marks extends EventTarget {
    first = 0;
    last = 0;
    #count = 0;

    reset(count) {
        this.#count = count;
        this.set(0, count - 1);
    }

    /** The other end moves along where it would be on the wrong side. */
    markIn(frame) {
        this.set(frame, Math.max(frame, this.last));
    }

    markOut(frame) {
        this.set(Math.min(frame, this.first), frame);
    }

    set(first, last) {
        const inside = (frame) => Math.max(0, Math.min(this.#count - 1, frame));
        this.first = inside(first);
        this.last = inside(last);
        this.dispatchEvent(new Event("change"));
    }

    get isWhole() {
        return this.first === 0 && this.last === this.#count - 1;
    }

    get count() {
        return this.#count === 0 ? 0 : this.last - this.first + 1;
    }
}
