// Which part of a picture a canvas shows, and how large. Lengths of the canvas are device pixels.

export const VALUES_FROM = 24; // device pixels per pixel from which values are written into pixels
const LARGEST_SCALE = 64;
const SMALLEST_SHARE = 0.5; // of the scale that fits; 1:1 is always possible

export class Viewport {
    width = 1; // of the canvas
    height = 1;
    pictureWidth = 1;
    pictureHeight = 1;
    isFitted = true;
    scale = 1; // device pixels per picture pixel
    centreX = 0.5; // of the canvas, in the picture
    centreY = 0.5;

    resize(width, height) {
        this.width = Math.max(1, width);
        this.height = Math.max(1, height);
        this.#settle();
    }

    /** A picture of another size is shown whole; says whether this one is. */
    setPicture(width, height) {
        const isOther = width !== this.pictureWidth || height !== this.pictureHeight;
        if (isOther) {
            this.pictureWidth = width;
            this.pictureHeight = height;
            this.fit();
        }
        return isOther;
    }

    fit() {
        this.isFitted = true;
        this.#settle();
    }

    setScale(scale, x = this.width / 2, y = this.height / 2) {
        const fixed = this.toPicture(x, y);
        this.isFitted = false;
        const smallest = Math.min(1, SMALLEST_SHARE * this.#fittingScale());
        this.scale = Math.min(LARGEST_SCALE, Math.max(smallest, scale));
        this.centreX = fixed.x - (x - this.width / 2) / this.scale;
        this.centreY = fixed.y - (y - this.height / 2) / this.scale;
        this.#settle();
    }

    /** By so many device pixels. */
    pan(x, y) {
        this.centreX -= x / this.scale;
        this.centreY -= y / this.scale;
        this.#settle();
    }

    /** Moves as far as needed for a pixel to be seen. */
    reveal(x, y) {
        const nearest = (centre, at, seen) => Math.max(at + 1 - seen / 2, Math.min(at + seen / 2, centre));
        this.centreX = nearest(this.centreX, x, this.width / this.scale);
        this.centreY = nearest(this.centreY, y, this.height / this.scale);
        this.#settle();
    }

    toPicture(x, y) {
        return {
            x: (x - this.width / 2) / this.scale + this.centreX,
            y: (y - this.height / 2) / this.scale + this.centreY,
        };
    }

    toCanvas(x, y) {
        return {
            x: (x - this.centreX) * this.scale + this.width / 2,
            y: (y - this.centreY) * this.scale + this.height / 2,
        };
    }

    /** A rectangle of the picture on the canvas. */
    place({ x, y, width, height }) {
        const corner = this.toCanvas(x, y);
        return { x: corner.x, y: corner.y, width: width * this.scale, height: height * this.scale };
    }

    /** The whole pixels of the picture that are seen. */
    visible() {
        const first = this.toPicture(0, 0);
        const last = this.toPicture(this.width, this.height);
        const x = Math.max(0, Math.floor(first.x));
        const y = Math.max(0, Math.floor(first.y));
        return {
            x,
            y,
            width: Math.max(1, Math.min(this.pictureWidth, Math.ceil(last.x)) - x),
            height: Math.max(1, Math.min(this.pictureHeight, Math.ceil(last.y)) - y),
        };
    }

    /** What the program is asked to send: no more pixels than are seen, values where they are read. */
    wanted() {
        const seen = this.visible();
        const isWhole = seen.width >= this.pictureWidth && seen.height >= this.pictureHeight;
        const width = Math.max(1, Math.min(seen.width, Math.ceil(seen.width * this.scale)));
        return { width, ...(isWhole ? {} : { region: seen }), raw: this.scale >= VALUES_FROM };
    }

    #fittingScale() {
        return Math.min(this.width / this.pictureWidth, this.height / this.pictureHeight);
    }

    #settle() {
        if (this.isFitted) {
            this.scale = this.#fittingScale();
        }
        this.centreX = clampCentre(this.centreX, this.width / this.scale, this.pictureWidth);
        this.centreY = clampCentre(this.centreY, this.height / this.scale, this.pictureHeight);
    }
}

/** A picture that fits is centred; a larger one leaves no gap at its edges. */
function clampCentre(centre, seen, size) {
    return seen >= size ? size / 2 : Math.min(size - seen / 2, Math.max(seen / 2, centre));
}
