// Mouse, wheel and keys on a picture.

const PAN_SHARE = 0.1; // of the canvas, for an arrow key
const FAST = 10; // pixels, for an arrow key with Shift

const ARROWS = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };

export class PictureInput {
    #frame;
    #picture;
    #drag = null; // where the pointer was last, while it is down

    constructor(frame, picture) {
        this.#frame = frame;
        this.#picture = picture;
        this.#listen();
    }

    #listen() {
        const frame = this.#frame;
        frame.addEventListener("wheel", (event) => this.#onWheel(event), { passive: false });
        frame.addEventListener("pointerdown", (event) => this.#onDown(event));
        frame.addEventListener("pointermove", (event) => this.#onMove(event));
        frame.addEventListener("pointerup", () => this.#onUp());
        frame.addEventListener("pointercancel", () => this.#onUp());
        frame.addEventListener("pointerleave", () => this.#picture.probe(null));
        frame.addEventListener("dblclick", () => this.#fitOrNot());
        frame.addEventListener("keydown", (event) => this.#onKey(event));
    }

    #fitOrNot() {
        this.#picture.viewport.isFitted ? this.#picture.oneToOne() : this.#picture.fit();
    }

    #onWheel(event) {
        event.preventDefault();
        const { x, y } = this.#at(event);
        this.#picture.zoom(event.deltaY < 0 ? 1 : -1, x, y);
    }

    #onDown(event) {
        if (event.button !== 0) {
            return;
        }
        this.#frame.setPointerCapture(event.pointerId);
        const at = this.#at(event);
        this.#drag = at;
        this.#picture.editor?.begin(this.#picture.viewport.toPicture(at.x, at.y));
    }

    #onMove(event) {
        const at = this.#at(event);
        const point = this.#picture.viewport.toPicture(at.x, at.y);
        if (this.#picture.editor?.isDrawing) {
            this.#picture.editor.drawTo(point);
            this.#picture.edited();
        } else if (this.#drag !== null) {
            this.#picture.pan(at.x - this.#drag.x, at.y - this.#drag.y);
            this.#drag = at;
        }
        this.#picture.probe({ x: Math.floor(point.x), y: Math.floor(point.y) });
    }

    #onUp() {
        this.#drag = null;
        this.#picture.editor?.end();
    }

    #onKey(event) {
        const isTaken = this.#onArrow(event) || this.#onCommand(event.key);
        if (isTaken) {
            event.preventDefault();
            event.stopPropagation();
        }
    }

    #onArrow(event) {
        const arrow = ARROWS[event.key];
        if (arrow === undefined) {
            return false;
        }
        const [right, down] = arrow;
        if (this.#picture.editor !== null) {
            event.shiftKey ? this.#picture.editor.grow(right, down) : this.#picture.editor.move(right, down);
            this.#picture.edited();
        } else if (this.#picture.crosshair !== null) {
            const pace = event.shiftKey ? FAST : 1;
            this.#picture.moveCrosshair(right * pace, down * pace);
        } else if (!this.#picture.viewport.isFitted) {
            const { width, height } = this.#picture.viewport;
            this.#picture.pan(-right * PAN_SHARE * width, -down * PAN_SHARE * height);
        } else {
            return false;
        }
        return true;
    }

    #onCommand(key) {
        const commands = {
            "+": () => this.#picture.zoom(1), "=": () => this.#picture.zoom(1), "-": () => this.#picture.zoom(-1),
            0: () => this.#picture.fit(), 1: () => this.#picture.oneToOne(),
        };
        if (this.#picture.editor !== null) {
            commands.Enter = () => this.#picture.dispatchEvent(new Event("apply"));
            commands.Escape = () => this.#picture.dispatchEvent(new Event("cancel"));
        }
        commands[key]?.();
        return commands[key] !== undefined;
    }

    #at(event) {
        const box = this.#frame.getBoundingClientRect();
        return {
            x: (event.clientX - box.left) * devicePixelRatio,
            y: (event.clientY - box.top) * devicePixelRatio,
        };
    }
}
