// All settings of a camera in their groups; saved to and loaded from the tool's JSON.

import { element, setText } from "./dom.js";
import { SettingRow } from "./setting.js";
import { countText } from "./words.js";

const OPEN_AT_FIRST = new Set(["Picture", "Timing", "Sensor"]);

export class Settings {
    #card; // socket, state, camera, notices
    #parts;
    #rows = new Map(); // name -> SettingRow
    #groups = new Map(); // name -> details

    constructor(card, parts) {
        this.#card = card;
        this.#parts = parts;
        parts.settingSearch.addEventListener("input", () => this.#filter());
        parts.saveSettings.addEventListener("click", () => this.#save());
        parts.loadSettings.addEventListener("click", () => parts.settingsFile.click());
        parts.settingsFile.addEventListener("change", () => this.#load());
    }

    show(settings) {
        const names = settings.map(({ name }) => name).join();
        if (names !== [...this.#rows.keys()].join()) {
            this.#build(settings);
        }
        for (const setting of settings) {
            this.#rows.get(setting.name).update(setting);
        }
    }

    /** Asks the camera for values, and shows at each of them what it took. */
    async set(values) {
        const { socket, camera } = this.#card;
        try {
            const { outcomes } = await socket.ask("set", { camera, values });
            this.#showOutcomes(outcomes);
        } catch (error) {
            for (const name of Object.keys(values)) {
                this.#rows.get(name)?.showFailure(error.message);
            }
            this.#card.notices.failure(error.message);
        }
    }

    #showOutcomes(outcomes) {
        for (const outcome of outcomes) {
            this.#rows.get(outcome.name)?.showOutcome(outcome);
        }
    }

    #build(settings) {
        this.#rows.clear();
        this.#groups.clear();
        for (const setting of settings) {
            const row = new SettingRow(setting, (name, value) => this.set({ [name]: value }));
            this.#rows.set(setting.name, row);
            this.#groupOf(setting).append(row.root);
        }
        this.#parts.settingGroups.replaceChildren(...this.#groups.values());
        this.#filter();
    }

    #groupOf({ group = "Other" }) {
        if (!this.#groups.has(group)) {
            this.#groups.set(group, element("details", { open: OPEN_AT_FIRST.has(group) },
                element("summary", {}, group)));
        }
        return this.#groups.get(group);
    }

    #filter() {
        const words = this.#parts.settingSearch.value.toLowerCase().split(/\s+/).filter(Boolean);
        let found = 0;
        for (const row of this.#rows.values()) {
            row.root.hidden = !row.matches(words);
            found += row.root.hidden ? 0 : 1;
        }
        for (const group of this.#groups.values()) {
            group.hidden = group.querySelector(".setting:not([hidden])") === null;
            group.open ||= words.length > 0;
        }
        setText(this.#parts.settingsFound, words.length > 0 ? `${countText(found, "setting")} found` : "");
    }

    async #save() {
        const { socket, camera, notices } = this.#card;
        const answer = await notices.watch(socket.ask("saveSettings", { camera }));
        if (answer !== undefined) {
            const blob = new Blob([JSON.stringify(answer.file, null, 2) + "\n"], { type: "application/json" });
            const link = element("a", { href: URL.createObjectURL(blob), download: `settings-${camera.replaceAll(":", "")}.json` });
            link.click();
            URL.revokeObjectURL(link.href);
        }
    }

    async #load() {
        const [chosen] = this.#parts.settingsFile.files;
        this.#parts.settingsFile.value = "";
        if (chosen === undefined) {
            return;
        }
        const { socket, camera, notices } = this.#card;
        const file = await notices.watch(readJson(chosen));
        const answer = file && await notices.watch(socket.ask("loadSettings", { camera, file }));
        if (answer) {
            this.#showOutcomes(answer.outcomes);
            const asAsked = answer.outcomes.filter((outcome) => outcome.asAsked).length;
            notices.news(`${asAsked} of ${countText(answer.outcomes.length, "setting")} are as in ${chosen.name}.`);
        }
    }
}

async function readJson(file) {
    try {
        return JSON.parse(await file.text());
    } catch {
        throw new Error(`${file.name} holds no settings; choose a file that "Save" has made.`);
    }
}
