// Plays a range of frames over and over, at the rate that is asked for; what does not come in time is
// left out.

export class Playback {
    #go; // go(frame): a promise that it is on the screen
    #range; // range(): {first, last}
    #rate; // rate(): frames per second
    #isOn = false;

    constructor(go, range, rate) {
        this.#go = go;
        this.#range = range;
        this.#rate = rate;
    }

    get isOn() {
        return this.#isOn;
    }

    stop() {
        this.#isOn = false;
    }

    async start(from) {
        this.#isOn = true;
        const { first, last } = this.#range();
        let frame = from >= first && from < last ? from : first;
        let before = performance.now();
        while (this.#isOn) {
            await this.#go(Math.floor(frame));
            await new Promise(requestAnimationFrame);
            const now = performance.now();
            frame = wrapped(frame + ((now - before) * this.#rate()) / 1000, this.#range());
            before = now;
        }
    }
}

function wrapped(frame, { first, last }) {
    const count = last - first + 1;
    return frame < first || frame >= last + 1 ? first + ((((frame - first) % count) + count) % count) : frame;
}
