// The strip of cameras that were found: each opened and closed with one button.

import { element } from "./dom.js";

export class Cameras {
    #app;
    #strip;
    #select;

    /** select(camera) brings an open camera's controls to the front. */
    constructor(app, strip, search, select) {
        this.#app = app;
        this.#strip = strip;
        this.#select = select;
        search.addEventListener("click", async () => {
            search.disabled = true;
            await app.notices.watch(app.socket.ask("search"));
            search.disabled = false;
        });
    }

    show(cameras, stateOf, selected) {
        const focused = this.#strip.contains(document.activeElement)
            ? document.activeElement.dataset.key : null;
        const isOneOfMany = cameras.filter(({ open }) => open).length > 1;
        this.#strip.replaceChildren(...cameras.map((row) => this.#chip(row, stateOf(row.camera), selected, isOneOfMany)));
        if (focused !== null) {
            this.#strip.querySelector(`[data-key="${focused}"]`)?.focus();
        }
    }

    #chip(row, state, selected, isOneOfMany) {
        const { camera, name, model, address, free, open } = row;
        const word = open ? state.state : free ? "closed" : "held by another program";
        const chip = element("li", { class: "chip", "data-state": open ? state.state : "closed" },
            element("span", { class: "lamp", "aria-hidden": "true" }),
            element("span", { class: "chip-name" }, name || model, element("small", {}, `${address} · ${word}`)));
        if (open && isOneOfMany) {
            chip.append(element("button", { type: "button", "aria-pressed": camera === selected, "data-key": camera,
                "aria-label": `Controls of ${name || model} at ${address}`, onclick: () => this.#select(camera) }, "Select"));
        } else if (!open) {
            chip.append(element("button", { type: "button", class: "primary", "data-key": camera, disabled: !free,
                "aria-label": `Open ${name || model} at ${address}`, onclick: () => this.#open(camera) }, "Open"));
        }
        return chip;
    }

    async #open(camera) {
        this.#select(camera);
        await this.#app.notices.watch(this.#app.socket.ask("open", { camera }));
    }
}
