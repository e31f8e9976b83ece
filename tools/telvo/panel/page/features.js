// Everything that the camera describes of itself, as a tree that can be searched.

import { element, setText, uniqueId } from "./dom.js";
import { countText } from "./words.js";

export class Features {
    #card;
    #parts;
    #leaves = []; // {root, text}

    constructor(card, parts) {
        this.#card = card;
        this.#parts = parts;
        parts.readFeatures.addEventListener("click", () => this.#read());
        parts.featureSearch.addEventListener("input", () => this.#filter());
    }

    async #read() {
        const { socket, camera, notices } = this.#card;
        setText(this.#parts.featuresFound, "reading …");
        const answer = await notices.watch(socket.ask("features", { camera }));
        if (answer === undefined) {
            setText(this.#parts.featuresFound, "");
            return;
        }
        this.#leaves = [];
        this.#parts.featureTree.replaceChildren(...answer.tree.map((node) => this.#branch(node)));
        this.#filter();
    }

    #branch(node) {
        if (node.children === undefined) {
            return this.#leaf(node);
        }
        return element("details", {}, element("summary", {}, node.display || node.name),
            ...node.children.map((child) => this.#branch(child)));
    }

    #leaf(feature) {
        const id = uniqueId("feature");
        const root = element("div", { class: "setting feature", title: feature.tooltip || feature.name });
        this.#leaves.push({ root, text: `${feature.name} ${feature.display} ${feature.tooltip}`.toLowerCase() });
        this.#fill(root, id, feature);
        return root;
    }

    #fill(root, id, feature) {
        const { name, display, unit, limits, access, visibility } = feature;
        const outcome = element("span", { class: "outcome", role: "status" });
        root.replaceChildren(
            element("label", { for: id }, display || name),
            element("span", { class: "control" }, this.#control(root, id, feature, outcome),
                unit ? element("span", { class: "unit" }, unit) : null),
            element("span", { class: "hint" }, [name, access, limits, visibility].filter(Boolean).join(" · ")),
            outcome);
    }

    #control(root, id, feature, outcome) {
        const { name, type, value, writable, choices } = feature;
        const write = (text) => this.#write(root, id, name, text, outcome);
        const common = { id, "data-feature": name, disabled: !writable };
        if (type === "command") {
            return element("button", { ...common, type: "button", onclick: () => write("") }, "Run");
        }
        const onchange = (event) => write(event.target.value);
        if (choices?.length > 0) {
            const select = element("select", { ...common, onchange },
                ...choices.map((choice) => element("option", { value: choice }, choice)));
            select.value = value;
            return select;
        }
        return element("input", { ...common, type: "text", autocomplete: "off", value, onchange });
    }

    async #write(root, id, name, value, outcome) {
        const { socket, camera } = this.#card;
        setText(outcome, "asking the camera …");
        try {
            const { feature } = await socket.ask("setFeature", { camera, name, value });
            this.#fill(root, id, feature);
            const told = root.querySelector(".outcome");
            told.dataset.kind = value === "" || feature.value === value ? "taken" : "differs";
            setText(told, value === "" ? "✓ done" : `camera took ${feature.value}`);
        } catch (error) {
            outcome.dataset.kind = "refused";
            setText(outcome, error.message);
        }
    }

    #filter() {
        const words = this.#parts.featureSearch.value.toLowerCase().split(/\s+/).filter(Boolean);
        let found = 0;
        for (const { root, text } of this.#leaves) {
            root.hidden = !words.every((word) => text.includes(word));
            found += root.hidden ? 0 : 1;
        }
        for (const branch of this.#parts.featureTree.querySelectorAll("details")) {
            branch.hidden = branch.querySelector(".feature:not([hidden])") === null;
            branch.open = words.length > 0 && !branch.hidden;
        }
        setText(this.#parts.featuresFound, this.#leaves.length > 0 ? countText(found, "feature") : "");
    }
}
