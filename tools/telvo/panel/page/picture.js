// The picture on its canvas: fit, 1:1, zoom, panning, the pixel under the pointer, what is drawn over it.

import { element, oncePerFrame } from "./dom.js";
import { decodeImage, valueAt } from "./image.js";
import { drawCrosshair, drawRegion, drawValues } from "./overlay.js";
import { Viewport } from "./viewport.js";

const ZOOM_STEP = 1.25;
const PAN_SHARE = 0.1; // of the canvas, for an arrow key
const BACKGROUND = "#08090b";

const ARROWS = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };

/**
 * Events: "zoom" (the view has changed), "view" (for it other pixels are wanted), "probe" (another pixel
 * is looked at), "edited" (the region that is drawn has changed), "apply" and "cancel" (Enter and Escape
 * while one is drawn).
 */
export class Picture extends EventTarget {
    viewport = new Viewport();
    image = null;
    crosshair = null; // a pixel, or null
    probed = null;
    editor = null; // RegionEditor while a region is drawn
    #editedStyle = null;
    #regions = []; // {region, name, colour}
    #frame;
    #canvas;
    #context;
    #drag = null;
    #lastTurn = 0; // pictures are counted as they come
    #shownTurn = 0;
    #lastWanted = "";
    #redraw = oncePerFrame(() => this.#draw());

    constructor(frame) {
        super();
        this.#frame = frame;
        this.#canvas = element("canvas", { role: "img", "aria-label": "No picture yet" });
        this.#context = this.#canvas.getContext("2d");
        frame.prepend(this.#canvas);
        new ResizeObserver(() => this.#resize()).observe(frame);
        this.#listen();
    }

    /** Draws it with the next refresh of the screen; false: a newer one was faster. */
    async show(message) {
        this.#lastTurn += 1;
        const turn = this.#lastTurn;
        const image = await decodeImage(message);
        await new Promise(requestAnimationFrame);
        if (turn < this.#shownTurn) {
            image.bitmap.close();
            return false;
        }
        this.#shownTurn = turn;
        this.#take(image);
        return true;
    }

    #take(image) {
        this.image?.bitmap.close();
        this.image = image;
        if (this.viewport.setPicture(image.header.pictureWidth, image.header.pictureHeight)) {
            this.dispatchEvent(new Event("zoom"));
        }
        this.#draw();
        this.#askForView();
        this.#probe(this.crosshair ?? this.probed);
    }

    describe(text) {
        this.#canvas.setAttribute("aria-label", text);
    }

    fit() {
        this.viewport.fit();
        this.#viewChanged();
    }

    oneToOne() {
        this.viewport.setScale(1);
        this.#viewChanged();
    }

    zoom(steps, x, y) {
        this.viewport.setScale(this.viewport.scale * ZOOM_STEP ** steps, x, y);
        this.#viewChanged();
    }

    toggleCrosshair() {
        const { pictureWidth, pictureHeight } = this.viewport;
        const centre = { x: Math.floor(pictureWidth / 2), y: Math.floor(pictureHeight / 2) };
        this.crosshair = this.crosshair === null ? centre : null;
        this.#probe(this.crosshair);
        this.#redraw();
    }

    setRegions(regions) {
        this.#regions = regions;
        this.#redraw();
    }

    edit(editor, style) {
        this.editor = editor;
        this.#editedStyle = style;
        this.#frame.classList.toggle("editing", editor !== null);
        this.#redraw();
    }

    /** The value of the pixel that is looked at: {x, y, text, isExact}, or null. */
    reading() {
        const point = this.crosshair ?? this.probed;
        const value = point === null || this.image === null ? null : valueAt(this.image, point.x, point.y);
        return value === null ? null : { ...point, ...value };
    }

    #listen() {
        const frame = this.#frame;
        frame.addEventListener("wheel", (event) => this.#onWheel(event), { passive: false });
        frame.addEventListener("pointerdown", (event) => this.#onDown(event));
        frame.addEventListener("pointermove", (event) => this.#onMove(event));
        frame.addEventListener("pointerup", () => this.#onUp());
        frame.addEventListener("pointercancel", () => this.#onUp());
        frame.addEventListener("pointerleave", () => this.#probe(this.crosshair));
        frame.addEventListener("dblclick", () => this.viewport.isFitted ? this.oneToOne() : this.fit());
        frame.addEventListener("keydown", (event) => this.#onKey(event));
    }

    #resize() {
        const { clientWidth, clientHeight } = this.#frame;
        this.#canvas.width = Math.max(1, Math.round(clientWidth * devicePixelRatio));
        this.#canvas.height = Math.max(1, Math.round(clientHeight * devicePixelRatio));
        this.viewport.resize(this.#canvas.width, this.#canvas.height);
        this.#draw();
        this.#askForView();
        this.dispatchEvent(new Event("zoom"));
    }

    #onWheel(event) {
        event.preventDefault();
        const { x, y } = this.#at(event);
        this.zoom(event.deltaY < 0 ? 1 : -1, x, y);
    }

    #onDown(event) {
        if (event.button !== 0) {
            return;
        }
        this.#frame.setPointerCapture(event.pointerId);
        const at = this.#at(event);
        this.#drag = at;
        this.editor?.begin(this.viewport.toPicture(at.x, at.y));
    }

    #onMove(event) {
        const at = this.#at(event);
        const point = this.viewport.toPicture(at.x, at.y);
        if (this.editor?.isDrawing) {
            this.editor.drawTo(point);
            this.#edited();
        } else if (this.#drag !== null) {
            this.viewport.pan(at.x - this.#drag.x, at.y - this.#drag.y);
            this.#drag = at;
            this.#viewChanged();
        }
        this.#probe({ x: Math.floor(point.x), y: Math.floor(point.y) });
    }

    #onUp() {
        this.#drag = null;
        this.editor?.end();
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
        if (this.editor !== null) {
            event.shiftKey ? this.editor.grow(right, down) : this.editor.move(right, down);
            this.#edited();
        } else if (this.crosshair !== null) {
            this.#moveCrosshair(right * (event.shiftKey ? 10 : 1), down * (event.shiftKey ? 10 : 1));
        } else if (!this.viewport.isFitted) {
            this.viewport.pan(-right * PAN_SHARE * this.viewport.width, -down * PAN_SHARE * this.viewport.height);
            this.#viewChanged();
        } else {
            return false;
        }
        return true;
    }

    #onCommand(key) {
        const commands = {
            "+": () => this.zoom(1), "=": () => this.zoom(1), "-": () => this.zoom(-1),
            0: () => this.fit(), 1: () => this.oneToOne(),
        };
        if (this.editor !== null) {
            commands.Enter = () => this.dispatchEvent(new Event("apply"));
            commands.Escape = () => this.dispatchEvent(new Event("cancel"));
        }
        commands[key]?.();
        return commands[key] !== undefined;
    }

    #moveCrosshair(right, down) {
        const { pictureWidth, pictureHeight } = this.viewport;
        this.crosshair = {
            x: Math.min(pictureWidth - 1, Math.max(0, this.crosshair.x + right)),
            y: Math.min(pictureHeight - 1, Math.max(0, this.crosshair.y + down)),
        };
        this.#probe(this.crosshair);
        this.#redraw();
    }

    #at(event) {
        const box = this.#canvas.getBoundingClientRect();
        return {
            x: (event.clientX - box.left) * devicePixelRatio,
            y: (event.clientY - box.top) * devicePixelRatio,
        };
    }

    #edited() {
        this.dispatchEvent(new Event("edited"));
        this.#redraw();
    }

    #probe(point) {
        this.probed = point;
        this.dispatchEvent(new Event("probe"));
    }

    #viewChanged() {
        this.#redraw();
        this.#askForView();
        this.dispatchEvent(new Event("zoom"));
    }

    #askForView() {
        const wanted = JSON.stringify(this.viewport.wanted());
        if (wanted !== this.#lastWanted) {
            this.#lastWanted = wanted;
            this.dispatchEvent(new Event("view"));
        }
    }

    #draw() {
        const context = this.#context;
        context.fillStyle = BACKGROUND;
        context.fillRect(0, 0, this.#canvas.width, this.#canvas.height);
        if (this.image === null) {
            return;
        }
        const { x, y, width, height } = this.viewport.place(this.image.header.region);
        context.imageSmoothingEnabled = this.viewport.scale < 1;
        context.imageSmoothingQuality = "medium";
        context.drawImage(this.image.bitmap, x, y, width, height);
        drawValues(context, this.viewport, this.image);
        this.#drawOver(context);
    }

    #drawOver(context) {
        for (const { region, name, colour } of this.#regions) {
            drawRegion(context, this.viewport, region, { name, colour, isEdited: false });
        }
        if (this.editor !== null) {
            drawRegion(context, this.viewport, this.editor.region, { ...this.#editedStyle, isEdited: true });
        }
        if (this.crosshair !== null) {
            drawCrosshair(context, this.viewport, this.crosshair);
        }
    }
}
