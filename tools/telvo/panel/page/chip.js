// A camera in the strip: what it is called, what it does, and one button to open or to select it.

import { element, setText } from "./dom.js";

export class Chip {
    root;
    #name = element("span", {});
    #about = element("small", {});
    #button = element("button", { type: "button", onclick: () => this.#act() });
    #act = () => {};

    constructor() {
        this.root = element("li", { class: "chip" }, element("span", { class: "lamp", "aria-hidden": "true" }),
            element("span", { class: "chip-name" }, this.#name, this.#about), this.#button);
    }

    /** Changes what is there: a button that is being pressed must stay the same. */
    show({ name, model, address }, state, look) {
        this.root.dataset.state = state;
        setText(this.#name, name || model);
        setText(this.#about, `${address} · ${look.about}`);
        this.#showButton(`${name || model} at ${address}`, look);
    }

    #showButton(camera, { word, isHidden, isEnabled, isSelected, act }) {
        setText(this.#button, word);
        this.#act = act;
        this.#button.hidden = isHidden;
        this.#button.disabled = !isEnabled;
        this.#button.classList.toggle("primary", word === "Open");
        this.#button.setAttribute("aria-label", `${word} ${camera}`);
        if (word === "Select") {
            this.#button.setAttribute("aria-pressed", isSelected);
        } else {
            this.#button.removeAttribute("aria-pressed");
        }
    }
}
