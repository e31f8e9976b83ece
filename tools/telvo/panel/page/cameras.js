// The strip of cameras that were found.

import { Chip } from "./chip.js";

export class Cameras {
    #app;
    #strip;
    #select;
    #chips = new Map(); // camera -> Chip

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

    /** state is a PanelState. */
    show(state, selected) {
        const isOneOfMany = state.cameras.filter((row) => state.isHeld(row)).length > 1;
        this.#removeAllBut(new Set(state.cameras.map(({ camera }) => camera)));
        for (const row of state.cameras) {
            const now = state.isHeld(row) ? state.stateOf(row.camera).state : "closed";
            this.#chipOf(row.camera).show(row, now, state.isHeld(row)
                ? this.#heldLook(row.camera, now, isOneOfMany, selected) : this.#freeLook(row));
        }
    }

    #heldLook(camera, about, isOneOfMany, selected) {
        return { about, word: "Select", isHidden: !isOneOfMany, isEnabled: true,
            isSelected: camera === selected, act: () => this.#select(camera) };
    }

    #freeLook({ camera, free }) {
        return { about: free ? "closed" : "held by another program", word: "Open", isHidden: false,
            isEnabled: free, isSelected: false, act: () => this.#open(camera) };
    }

    #chipOf(camera) {
        if (!this.#chips.has(camera)) {
            const chip = new Chip();
            this.#chips.set(camera, chip);
            this.#strip.append(chip.root);
        }
        return this.#chips.get(camera);
    }

    #removeAllBut(kept) {
        for (const [camera, chip] of this.#chips) {
            if (!kept.has(camera)) {
                chip.root.remove();
                this.#chips.delete(camera);
            }
        }
    }

    async #open(camera) {
        if (await this.#app.notices.watch(this.#app.socket.ask("open", { camera })) !== undefined) {
            this.#select(camera);
        }
    }
}
