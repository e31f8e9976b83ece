// A region of the picture that is drawn with the mouse or moved with the arrow keys, in the camera's
// steps and limits.

/**
 * Limits: {x, y, width, height}, each {minimum, maximum, step}. The sum of edge and size stays within
 * across (the width that the picture can have) and down.
 */
export class RegionEditor {
    region;
    #limits;
    #across;
    #down;
    #anchor = null; // of the mouse, while drawing

    constructor(region, limits, across, down) {
        this.region = { ...region };
        this.#limits = limits;
        this.#across = across;
        this.#down = down;
    }

    begin(point) {
        this.#anchor = point;
    }

    get isDrawing() {
        return this.#anchor !== null;
    }

    drawTo(point) {
        const from = this.#anchor;
        this.#take(Math.min(from.x, point.x), Math.min(from.y, point.y),
            Math.abs(point.x - from.x), Math.abs(point.y - from.y));
    }

    end() {
        this.#anchor = null;
    }

    /** By so many of the camera's steps. */
    move(right, down) {
        const { x, y, width, height } = this.region;
        this.#take(x + right * this.#limits.x.step, y + down * this.#limits.y.step, width, height);
    }

    grow(wider, higher) {
        const { x, y, width, height } = this.region;
        this.#take(x, y, width + wider * this.#limits.width.step,
            height + higher * this.#limits.height.step);
    }

    #take(x, y, width, height) {
        const size = (wanted, limits, most) =>
            snap(Math.min(wanted, most), limits, Math.min(limits.maximum, most));
        const across = size(width, this.#limits.width, this.#across);
        const down = size(height, this.#limits.height, this.#down);
        this.region = {
            x: snap(x, this.#limits.x, this.#across - across),
            y: snap(y, this.#limits.y, this.#down - down),
            width: across,
            height: down,
        };
    }
}

/** The nearest value that the camera can take, from its minimum in its steps to this maximum. */
export function snap(value, { minimum, step }, maximum) {
    const last = minimum + Math.floor((maximum - minimum) / step) * step;
    const nearest = minimum + Math.round((value - minimum) / step) * step;
    return Math.max(minimum, Math.min(last, nearest));
}
