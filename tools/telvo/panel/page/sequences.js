// The sequences of a recording, each as a button with a bar on which its trigger is marked.

import { element } from "./dom.js";
import { triggerOf } from "./recording.js";
import { countText } from "./words.js";

export class SequenceList {
    #list;
    #choose;

    constructor(list, choose) {
        this.#list = list;
        this.#choose = choose;
    }

    /** A single one needs no choice. */
    show(rows) {
        this.#list.replaceChildren(...rows.map((row) => this.#button(row)));
        this.#list.hidden = rows.length < 2;
    }

    mark(row) {
        for (const button of this.#list.children) {
            button.setAttribute("aria-pressed", Number(button.dataset.sequence) === row?.sequence);
        }
    }

    #button(row) {
        return element("button", { type: "button", "data-sequence": row.sequence, onclick: () => this.#choose(row) },
            element("span", {}, `Sequence ${row.sequence}`), barOf(row),
            element("small", {}, countText(row.frames, "frame")));
    }
}

function barOf(row) {
    const bar = element("span", { class: "sequence-bar", "aria-hidden": "true" });
    const trigger = triggerOf(row);
    if (trigger !== null) {
        const mark = element("span", {});
        mark.style.left = `${(100 * trigger.last) / row.frames}%`;
        bar.append(mark);
    }
    return bar;
}
