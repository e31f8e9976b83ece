// What a recording is to be, and the buttons that start, trigger and end it.

import { setText } from "./dom.js";

const CAN_ARM = new Set(["idle", "live"]);
const RUNNING = new Set(["armed", "recording"]);
const HAS_WINDOW = "window";

export class Record {
    #card;
    #parts;

    constructor(card, parts) {
        this.#card = card;
        this.#parts = parts;
        parts.live.addEventListener("click", () => this.#toggleLive());
        parts.arm.addEventListener("click", () => this.#arm());
        parts.trigger.addEventListener("click", () => this.#ask("trigger"));
        parts.stop.addEventListener("click", () => this.#ask("stop"));
        parts.flash.addEventListener("click", () => this.#toggleFlash());
        parts.recordForm.addEventListener("input", () => {
            parts.recordForm.dataset.isTouched = "";
            this.#showOptions();
        });
        parts.recordForm.addEventListener("submit", (event) => {
            event.preventDefault();
            this.#arm();
        });
        this.#showOptions();
    }

    /** Which buttons make sense now. */
    show({ state, live, flashCard }) {
        const parts = this.#parts;
        parts.live.setAttribute("aria-pressed", live === true);
        setText(parts.liveWord, live ? "Live off" : "Live");
        parts.live.disabled = !["idle", "live", "armed", "recording"].includes(state);
        parts.arm.disabled = !CAN_ARM.has(state);
        parts.armToo.disabled = parts.arm.disabled;
        parts.trigger.disabled = !RUNNING.has(state);
        parts.stop.disabled = !RUNNING.has(state);
        parts.flash.hidden = flashCard !== true;
        parts.flash.disabled = state !== "flash" && !CAN_ARM.has(state);
        parts.flash.setAttribute("aria-pressed", state === "flash");
    }

    /** What the camera is set to, where the operator has chosen nothing yet. */
    showSettings(settingOf) {
        const form = this.#parts.recordForm;
        if (form.dataset.isTouched === undefined) {
            form.elements.mode.value = settingOf("record-mode")?.value === "continuous" ? "ring" : "single";
            form.elements.trigger.value = triggerOf(settingOf);
            form.elements.sequences.value = settingOf("record-sequences")?.value ?? 1;
            this.#showKinds();
        }
    }

    #showOptions() {
        this.#showKinds();
        const share = this.#parts.recordForm.elements.post.value;
        setText(this.#parts.splitText, `${100 - share} % before the trigger, ${share} % after it`);
        this.#parts.splitBar.style.setProperty("--post", `${share}%`);
    }

    #showKinds() {
        const { mode, trigger } = this.#parts.recordForm.elements;
        const isRing = mode.value === "ring";
        this.#parts.ringOptions.hidden = !isRing;
        for (const option of trigger.options) {
            option.disabled = !isRing && ["window", "key"].includes(option.value);
        }
        if (trigger.selectedOptions[0]?.disabled) {
            trigger.value = "none";
        }
        this.#parts.windowHint.hidden = trigger.value !== HAS_WINDOW;
    }

    #arm() {
        const form = this.#parts.recordForm;
        form.dataset.isTouched = "";
        const { mode, trigger, sequences, post, frames } = form.elements;
        const plan = { mode: mode.value, trigger: trigger.value };
        if (mode.value === "ring") {
            plan.sequences = Number(sequences.value);
            if (trigger.value !== "none") {
                plan.post = `${post.value}%`;
            }
        }
        if (frames.value !== "") {
            plan.frames = Number(frames.value);
        }
        this.#ask("arm", plan);
    }

    #toggleLive() {
        this.#ask("live", { on: this.#parts.live.getAttribute("aria-pressed") !== "true" });
    }

    #toggleFlash() {
        this.#ask("flash", { on: this.#parts.flash.getAttribute("aria-pressed") !== "true" });
    }

    #ask(what, values = {}) {
        const { socket, camera, notices } = this.#card;
        return notices.watch(socket.ask(what, { camera, ...values }));
    }
}

function triggerOf(settingOf) {
    if (settingOf("external-trigger")?.value === true) {
        return "external";
    }
    return settingOf("window-trigger")?.value === true ? HAS_WINDOW : "none";
}
