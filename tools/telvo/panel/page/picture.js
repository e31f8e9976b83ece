// The picture on its canvas: fit, 1:1, zoom, panning, the pixel that is looked at, what is drawn over it.

import { element, oncePerFrame } from "./dom.js";
import { decodeImage, valueAt } from "./image.js";
import { drawCrosshair, drawRegion, drawValues } from "./overlay.js";
import { PictureInput } from "./pictureinput.js";
import { Viewport } from "./viewport.js";

const ZOOM_STEP = 1.25;
const BACKGROUND = "#08090b";

/**
 * Events: "zoom" (the view has changed), "view" (for it other pixels are wanted), "probe" (another pixel
 * is looked at), "edited" (the region that is drawn has changed), "apply" and "cancel" (Enter and Escape
 * while one is drawn).
 */
export class Picture extends EventTarget {
    viewport = new Viewport();
    image = null;
    filter = null; // the order of the sensor's colour filter, "" for none; null: as the program has it
    crosshair = null; // a pixel, or null
    #probed = null;
    editor = null; // RegionEditor while a region is drawn
    #editedStyle = null;
    #regions = []; // {region, name, colour}
    #frame;
    #canvas;
    #context;
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
        new PictureInput(frame, this);
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
        this.probe(this.crosshair ?? this.#probed);
    }

    /** What the program is asked to send. */
    wanted() {
        return { ...this.viewport.wanted(), ...(this.filter === null ? {} : { colour: this.filter }) };
    }

    setFilter(filter) {
        this.filter = filter;
        this.#askForView();
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

    /** Around a place on the canvas; else around the crosshair, or the middle. */
    zoom(steps, x, y) {
        if (x === undefined && this.crosshair !== null) {
            ({ x, y } = this.viewport.toCanvas(this.crosshair.x + 0.5, this.crosshair.y + 0.5));
        }
        this.viewport.setScale(this.viewport.scale * ZOOM_STEP ** steps, x, y);
        this.#viewChanged();
    }

    /** By so many device pixels. */
    pan(x, y) {
        this.viewport.pan(x, y);
        this.#viewChanged();
    }

    toggleCrosshair() {
        const { pictureWidth, pictureHeight } = this.viewport;
        const centre = { x: Math.floor(pictureWidth / 2), y: Math.floor(pictureHeight / 2) };
        this.crosshair = this.crosshair === null ? centre : null;
        this.probe(this.crosshair);
        this.#redraw();
    }

    /** By so many pixels of the picture. */
    moveCrosshair(right, down) {
        const { pictureWidth, pictureHeight } = this.viewport;
        this.crosshair = {
            x: Math.min(pictureWidth - 1, Math.max(0, this.crosshair.x + right)),
            y: Math.min(pictureHeight - 1, Math.max(0, this.crosshair.y + down)),
        };
        this.viewport.reveal(this.crosshair.x, this.crosshair.y);
        this.probe(this.crosshair);
        this.#viewChanged();
    }

    /** Looks at a pixel; null: at none. The crosshair's goes before it. */
    probe(point) {
        this.#probed = point;
        this.dispatchEvent(new Event("probe"));
    }

    /** The region that is drawn has changed. */
    edited() {
        this.dispatchEvent(new Event("edited"));
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
        const point = this.crosshair ?? this.#probed;
        const value = point === null || this.image === null ? null : valueAt(this.image, point.x, point.y);
        return value === null ? null : { ...point, ...value };
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

    #viewChanged() {
        this.#redraw();
        this.#askForView();
        this.dispatchEvent(new Event("zoom"));
    }

    #askForView() {
        const wanted = JSON.stringify(this.wanted());
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
