// A small canvas that follows its size and the page's colours.

export class Chart {
    #canvas;
    #draw;

    /** draw(context, width, height, colours) in CSS pixels. */
    constructor(canvas, draw) {
        this.#canvas = canvas;
        this.#draw = draw;
        new ResizeObserver(() => this.redraw()).observe(canvas);
        matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => this.redraw());
    }

    redraw() {
        const { clientWidth: width, clientHeight: height } = this.#canvas;
        if (width === 0) {
            return;
        }
        const pixels = [Math.round(width * devicePixelRatio), Math.round(height * devicePixelRatio)];
        if (this.#canvas.width !== pixels[0] || this.#canvas.height !== pixels[1]) {
            [this.#canvas.width, this.#canvas.height] = pixels;
        }
        const context = this.#canvas.getContext("2d");
        context.setTransform(devicePixelRatio, 0, 0, devicePixelRatio, 0, 0);
        context.clearRect(0, 0, width, height);
        this.#draw(context, width, height, this.#colours());
    }

    #colours() {
        const style = getComputedStyle(this.#canvas);
        const colour = (name) => style.getPropertyValue(`--${name}`).trim();
        return {
            ink: colour("ink"), faint: colour("ink-faint"), line: colour("line"), accent: colour("accent"),
            alarm: colour("alarm"), warn: colour("warn"), good: colour("good"), well: colour("well"),
        };
    }
}
