// The page: connects to the program, and keeps a card for every open camera.

import { Cameras } from "./cameras.js";
import { Card } from "./card.js";
import { setText } from "./dom.js";
import { Notices } from "./notices.js";
import { Socket } from "./socket.js";
import { PanelState } from "./state.js";

const part = (id) => document.getElementById(id);

class Panel {
    socket = new Socket(`${location.protocol === "https:" ? "wss" : "ws"}://${location.host}/socket`);
    state = new PanelState(this.socket);
    notices = new Notices(part("notices"));
    #cards = new Map(); // camera -> Card
    #selected = null;
    #cameras = new Cameras(this, part("cameras"), part("search"), (camera) => this.#select(camera));
    #hasEnded = false;

    start() {
        this.socket.addEventListener("up", () => this.#onUp());
        this.socket.addEventListener("down", () => this.#showConnection(false));
        this.#onState("cameras", () => this.#showCameras());
        this.#onState("downloads", () => this.#cards.forEach((card) => card.showDownloads()));
        this.#onState("log", ({ text, stays }) => (stays ? this.notices.remark(text) : this.notices.news(text)));
        this.#onState("end", () => { this.#hasEnded = true; });
        this.#onState("curve", (message) => this.#cards.get(message.camera)?.showCurve(message));
        this.#onState("settings", (camera) => this.#cards.get(camera)?.showSettings());
        this.#onState("recording", (camera) => this.#cards.get(camera)?.showRecording());
        this.#onState("state", (camera) => {
            this.#showCameras();
            this.#cards.get(camera)?.showState();
        });
        this.socket.open();
    }

    #onState(name, act) {
        this.state.addEventListener(name, ({ detail }) => act(detail));
    }

    async #onUp() {
        this.#hasEnded = false;
        await this.notices.watch(this.state.greet());
        this.#showConnection(this.socket.isUp);
        for (const card of this.#cards.values()) {
            card.refresh();
        }
    }

    #showConnection(isUp) {
        document.body.classList.toggle("offline", !isUp);
        part("offline").hidden = isUp;
        setText(part("offline-text"), this.#hasEnded
            ? "The panel's program has ended. Start it again, and this page goes on."
            : "No connection to the panel's program. Trying again …");
        setText(part("program"), isUp ? `Telvo ${this.state.hello.version}` : "not connected");
    }

    #showCameras() {
        const open = this.state.cameras.filter((row) => this.state.isHeld(row));
        this.#removeAllBut(new Set(open.map(({ camera }) => camera)));
        for (const row of open) {
            this.#cardOf(row).showRow(row);
        }
        if (!this.#cards.has(this.#selected)) {
            this.#select(open[0]?.camera ?? this.#selected);
        }
        part("welcome").hidden = open.length > 0;
        part("stage").dataset.cards = this.#cards.size;
        this.#showStrip();
    }

    #cardOf(row) {
        if (!this.#cards.has(row.camera)) {
            const card = new Card(this, row);
            this.#cards.set(row.camera, card);
            part("stage").append(card.root);
            part("side").append(card.controls);
            card.root.addEventListener("focusin", () => this.#select(row.camera));
            card.root.addEventListener("pointerdown", () => this.#select(row.camera));
            card.showDownloads();
            card.refresh();
            this.#select(this.#selected ?? row.camera);
        }
        return this.#cards.get(row.camera);
    }

    #removeAllBut(kept) {
        for (const [camera, card] of this.#cards) {
            if (!kept.has(camera)) {
                card.end();
                this.#cards.delete(camera);
            }
        }
    }

    #select(camera) {
        const isChange = camera !== this.#selected;
        this.#selected = camera;
        for (const [key, card] of this.#cards) {
            card.setSelected(key === camera);
            card.controls.hidden = key !== camera;
        }
        if (isChange) {
            this.#showStrip();
        }
    }

    #showStrip() {
        this.#cameras.show(this.state, this.#selected);
    }
}

new Panel().start();
