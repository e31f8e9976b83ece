// Drawing a region into the picture: the camera's picture area, or the window that triggers.

import { setText } from "./dom.js";
import { RegionEditor } from "./region.js";

const ROI = { name: "Picture area", colour: "#7dd3fc" };
const TRIGGER_WINDOW = { name: "Trigger window", colour: "#f9a8d4" };

const ANY = { minimum: 0, maximum: Number.MAX_SAFE_INTEGER, step: 1 };
const SIZE = { ...ANY, minimum: 1 };

function limitsOf(setting, otherwise) {
    return {
        minimum: setting?.minimum ?? otherwise.minimum,
        maximum: setting?.maximum ?? otherwise.maximum,
        step: setting?.step || otherwise.step,
    };
}

/** Starts at most one drawing at a time; apply(values) is called with the settings for what was drawn. */
export class RegionTool {
    #picture;
    #parts;
    #settingOf;
    #apply;
    #style = null;

    constructor(picture, parts, settingOf, apply) {
        this.#picture = picture;
        this.#parts = parts;
        this.#settingOf = settingOf;
        this.#apply = apply;
        parts.drawRoi.addEventListener("click", () => this.#toggle(ROI));
        parts.drawWindow.addEventListener("click", () => this.#toggle(TRIGGER_WINDOW));
        parts.regionApply.addEventListener("click", () => this.#finish());
        parts.regionCancel.addEventListener("click", () => this.#stop());
        parts.regionWhole.addEventListener("click", () => this.#takeWhole());
        picture.addEventListener("edited", () => this.#describe());
        picture.addEventListener("apply", () => this.#finish());
        picture.addEventListener("cancel", () => this.#stop());
    }

    /** Draws the window as it is set, where it triggers. */
    showTriggerWindow() {
        const isOn = this.#settingOf("window-trigger")?.value === true;
        const region = this.#windowRegion(0);
        this.#picture.setRegions(isOn && region.width > 0 && region.height > 0 ? [{ region, ...TRIGGER_WINDOW }] : []);
        this.#parts.drawWindow.hidden = this.#settingOf("window-left") === undefined;
    }

    #toggle(style) {
        this.#style === style ? this.#stop() : this.#start(style);
    }

    #start(style) {
        this.#style = style;
        this.#picture.edit(style === ROI ? this.#roiEditor() : this.#windowEditor(), style);
        this.#showButtons();
        this.#describe();
        this.#parts.frame.focus();
    }

    #number(name, otherwise = 0) {
        const value = this.#settingOf(name)?.value;
        return typeof value === "number" ? value : otherwise;
    }

    /** The sensor's pixels across: what the width and its offset can reach together. */
    #sensor(size, offset) {
        const here = this.#number(size) + this.#number(offset);
        return Math.max(this.#settingOf(size)?.maximum ?? 0, here);
    }

    /** In coordinates of the picture as it is now, so that edges left and above it are negative. */
    #roiEditor() {
        const { pictureWidth, pictureHeight } = this.#picture.viewport;
        const left = this.#number("offset-x");
        const top = this.#number("offset-y");
        const shifted = (name, by) => {
            const limits = limitsOf(this.#settingOf(name), ANY);
            return { ...limits, minimum: limits.minimum - by };
        };
        const limits = {
            x: shifted("offset-x", left),
            y: shifted("offset-y", top),
            width: limitsOf(this.#settingOf("width"), SIZE),
            height: limitsOf(this.#settingOf("height"), SIZE),
        };
        return new RegionEditor({ x: 0, y: 0, width: pictureWidth, height: pictureHeight }, limits,
            this.#sensor("width", "offset-x") - left, this.#sensor("height", "offset-y") - top);
    }

    #windowEditor() {
        const { pictureWidth, pictureHeight } = this.#picture.viewport;
        const limits = {
            x: limitsOf(this.#settingOf("window-left"), ANY),
            y: limitsOf(this.#settingOf("window-top"), ANY),
            width: limitsOf(this.#settingOf("window-width"), SIZE),
            height: limitsOf(this.#settingOf("window-height"), SIZE),
        };
        return new RegionEditor(this.#windowRegion(1), limits, pictureWidth, pictureHeight);
    }

    /** As it is set; sizes that the camera does not tell are as given. */
    #windowRegion(size) {
        return {
            x: this.#number("window-left"),
            y: this.#number("window-top"),
            width: this.#number("window-width", size),
            height: this.#number("window-height", size),
        };
    }

    #finish() {
        if (this.#style !== null) {
            const { region } = this.#picture.editor;
            const values = valuesOf(this.#style, this.#style === ROI ? this.#onSensor(region) : region);
            this.#stop();
            this.#apply(values);
        }
    }

    #onSensor({ x, y, width, height }) {
        return { x: x + this.#number("offset-x"), y: y + this.#number("offset-y"), width, height };
    }

    #takeWhole() {
        const whole = this.#style === ROI
            ? { x: 0, y: 0, width: this.#sensor("width", "offset-x"), height: this.#sensor("height", "offset-y") }
            : { x: 0, y: 0, width: this.#picture.viewport.pictureWidth, height: this.#picture.viewport.pictureHeight };
        const values = valuesOf(this.#style, whole);
        this.#stop();
        this.#apply(values);
    }

    #stop() {
        this.#style = null;
        this.#picture.edit(null, null);
        this.#showButtons();
    }

    #showButtons() {
        this.#parts.drawRoi.setAttribute("aria-pressed", this.#style === ROI);
        this.#parts.drawWindow.setAttribute("aria-pressed", this.#style === TRIGGER_WINDOW);
        this.#parts.regionBar.hidden = this.#style === null;
    }

    #describe() {
        const { x, y, width, height } = this.#style === ROI
            ? this.#onSensor(this.#picture.editor.region) : this.#picture.editor.region;
        setText(this.#parts.regionText, `${this.#style.name}: ${width} × ${height} at ${x}, ${y}`);
    }
}

function valuesOf(style, { x, y, width, height }) {
    return style === ROI
        ? { width, height, "offset-x": x, "offset-y": y }
        : { "window-left": x, "window-top": y, "window-width": width, "window-height": height };
}
