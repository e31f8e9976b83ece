// One setting: a control for its kind, its limits and unit, and what the camera took.

import { element, setText, uniqueId } from "./dom.js";

const SPOKEN = { roi: "ROI", "irig-b": "IRIG-B" };

/** "frame-rate" as "Frame rate" */
export function labelOf(name) {
    const words = SPOKEN[name] ?? name.replaceAll("-", " ");
    return words[0].toUpperCase() + words.slice(1);
}

function limitsText({ minimum, maximum, step, limits }) {
    if (minimum === undefined || maximum === undefined || minimum === null || maximum === null) {
        return limits ?? "";
    }
    return `${minimum} to ${maximum}${step > 1 ? `, steps of ${step}` : ""}`;
}

function makeControl(setting, common) {
    if (setting.kind === "choice") {
        return element("select", common,
            ...setting.choices.map((choice) => element("option", { value: choice }, choice)));
    }
    if (setting.kind === "switch") {
        return element("input", { ...common, type: "checkbox", role: "switch" });
    }
    return element("input", {
        ...common, type: "text", autocomplete: "off", spellcheck: "false",
        inputmode: setting.kind === "number" ? "decimal" : null,
    });
}

export class SettingRow {
    root;
    #setting;
    #control;
    #outcome;
    #limits;
    #change;
    #isTyping = false;

    /** change(name, value) asks the camera for a value. */
    constructor(setting, change) {
        this.#change = change;
        const id = uniqueId("setting");
        const hint = `${id}-hint`;
        const told = `${id}-told`;
        this.#control = makeControl(setting, {
            id, "aria-describedby": `${hint} ${told}`, "data-setting": setting.name,
            disabled: setting.readOnly ? true : null,
        });
        this.#limits = element("span", { class: "hint", id: hint });
        this.#outcome = element("span", { class: "outcome", id: told, role: "status" });
        this.root = element("div", { class: "setting", "data-kind": setting.kind, title: setting.text },
            element("label", { for: id }, labelOf(setting.name)),
            element("span", { class: "control" }, this.#control,
                setting.unit ? element("span", { class: "unit" }, setting.unit) : null),
            this.#limits, this.#outcome);
        this.#listen();
        this.update(setting);
    }

    /** What the camera has now; what is being typed is left alone. */
    update(setting) {
        this.#setting = setting;
        setText(this.#limits, limitsText(setting));
        if (!this.#isTyping) {
            this.#showValue();
        }
    }

    /** How the camera took what it was asked for. */
    showOutcome({ asked, taken, asAsked, refused, note }) {
        const text = refused ? `refused${note ? `: ${note}` : ""}`
            : asAsked ? `✓ camera took ${taken}`
                : `camera took ${note || `${taken} instead of ${asked}`}`;
        this.#outcome.dataset.kind = refused ? "refused" : asAsked ? "taken" : "differs";
        setText(this.#outcome, text);
        this.#showValue();
    }

    showFailure(text) {
        this.#outcome.dataset.kind = "refused";
        setText(this.#outcome, text);
        this.#showValue();
    }

    matches(words) {
        const all = `${this.#setting.name} ${labelOf(this.#setting.name)} ${this.#setting.text}`.toLowerCase();
        return words.every((word) => all.includes(word));
    }

    #showValue() {
        this.#isTyping = false;
        const { kind, value } = this.#setting;
        if (kind === "switch") {
            this.#control.checked = value === true || value === "on";
        } else {
            this.#control.value = value ?? "";
        }
    }

    #listen() {
        this.#control.addEventListener("input", () => { this.#isTyping = true; });
        this.#control.addEventListener("change", () => this.#ask());
        this.#control.addEventListener("keydown", (event) => {
            if (event.key === "Escape") {
                this.#showValue();
            }
        });
    }

    #ask() {
        const isSwitch = this.#setting.kind === "switch";
        const value = isSwitch ? this.#control.checked : this.#control.value.trim();
        this.#isTyping = false;
        delete this.#outcome.dataset.kind;
        setText(this.#outcome, "asking the camera …");
        this.#change(this.#setting.name, value);
    }
}
