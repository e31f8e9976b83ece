// The buttons above a picture that change how it is looked at, and what is read at the pixel looked at.

import { setText } from "./dom.js";
import { numberText } from "./words.js";

export class ViewTools {
    #picture;
    #parts;

    constructor(picture, parts) {
        this.#picture = picture;
        this.#parts = parts;
        const clicks = {
            fit: () => picture.fit(), oneToOne: () => picture.oneToOne(),
            zoomIn: () => picture.zoom(1), zoomOut: () => picture.zoom(-1),
            crosshair: () => this.toggleCrosshair(),
        };
        for (const [name, act] of Object.entries(clicks)) {
            parts[name].addEventListener("click", act);
        }
        picture.addEventListener("probe", () => this.#showReading());
        picture.addEventListener("zoom", () => this.#showZoom());
    }

    toggleCrosshair() {
        this.#picture.toggleCrosshair();
        this.#parts.crosshair.setAttribute("aria-pressed", this.#picture.crosshair !== null);
    }

    #showReading() {
        const reading = this.#picture.reading();
        setText(this.#parts.reading, reading === null ? ""
            : `x ${reading.x}  y ${reading.y}  ${reading.isExact ? "=" : "≈"} ${reading.text}`);
    }

    #showZoom() {
        const { image, viewport } = this.#picture;
        setText(this.#parts.zoomText, image === null ? "" : `${numberText(100 * viewport.scale)} %`);
        this.#parts.fit.setAttribute("aria-pressed", viewport.isFitted);
        this.#parts.oneToOne.setAttribute("aria-pressed", !viewport.isFitted && viewport.scale === 1);
        this.#showReading();
    }
}
