// One camera: its picture, its state, and the controls that belong to it.

import { Download } from "./download.js";
import { fromTemplate, setText } from "./dom.js";
import { Features } from "./features.js";
import { Live } from "./live.js";
import { Picture } from "./picture.js";
import { Record } from "./record.js";
import { RegionTool } from "./regiontool.js";
import { Review } from "./review.js";
import { Settings } from "./settings.js";
import { Shown } from "./shown.js";
import { StateLine } from "./stateline.js";
import { makeTabs } from "./tabs.js";
import { Veil } from "./veil.js";
import { ViewTools } from "./viewtools.js";

const KEYS_OF_OTHERS = "input, select, textarea, button, summary, a, [role=tab]";

export class Card {
    root;
    controls;
    camera;
    socket;
    state;
    notices;
    #parts;
    #picture;
    #view;
    #shown;
    #live;
    #review;
    #settings;
    #record;
    #download;
    #stateLine;
    #regions;
    #veil;
    #isLive = false;

    /** app has socket, state and notices. */
    constructor(app, row) {
        Object.assign(this, { camera: row.camera, socket: app.socket, state: app.state, notices: app.notices });
        const card = fromTemplate("card");
        const controls = fromTemplate("controls");
        this.root = card.root;
        this.controls = controls.root;
        this.#parts = { ...controls, ...card };
        this.root.dataset.camera = this.controls.dataset.camera = row.camera;
        this.#makeParts();
        this.#listen();
        this.showRow(row);
    }

    /** After every connection to the program. */
    refresh() {
        this.#live.askForView();
        this.showState();
        this.state.readSettings(this.camera).catch(() => {}); // the camera is being connected or lost
        this.state.readRecording(this.camera).catch(() => {});
    }

    end() {
        this.#live.end();
        this.#stateLine.end();
        this.#review.stopPlaying();
        this.root.remove();
        this.controls.remove();
    }

    get isIdle() {
        return this.state.stateOf(this.camera).state === "idle";
    }

    setSelected(isSelected) {
        this.root.classList.toggle("selected", isSelected);
    }

    showRow({ name, model, serial, address }) {
        setText(this.#parts.title, name || model);
        setText(this.#parts.about, [model, serial, address].filter(Boolean).join(" · "));
        this.root.setAttribute("aria-label", `Camera ${name || model}, ${address}`);
    }

    showState() {
        const state = this.state.stateOf(this.camera);
        this.#stateLine.show(state);
        this.#record.show(state);
        this.#parts.filterField.hidden = this.#parts.colourOption.hidden = state.colour !== true;
        this.#setLive(state.live === true);
        this.#veil.setLost(state.state === "lost");
    }

    #setLive(isLive) {
        if (isLive && !this.#isLive) {
            this.#review.leave();
        }
        this.#isLive = isLive;
        this.#live.setOn(isLive);
        if (!isLive) {
            this.#shown.endLive();
        }
    }

    showSettings() {
        const settingOf = (name) => this.state.settingOf(this.camera, name);
        this.#settings.show(this.state.settingsOf(this.camera));
        this.#record.showSettings(settingOf);
        this.#regions.showTriggerWindow();
    }

    showRecording() {
        this.#review.setSequences(this.state.sequencesOf(this.camera), this.state.recordingOf(this.camera));
    }

    showCurve(message) {
        this.#review.setCurve(message);
    }

    showDownloads() {
        const { hello, files, jobs } = this.state;
        this.#download.setFormats(hello?.formats ?? []);
        this.#download.showFiles(hello?.folder, files);
        this.#download.showJobs([...jobs.values()].filter(({ camera }) => camera === undefined || camera === this.camera));
    }

    #makeParts() {
        const parts = this.#parts;
        this.#picture = new Picture(parts.frame);
        this.#view = new ViewTools(this.#picture, parts);
        this.#shown = new Shown(this.#picture, parts);
        this.#live = new Live(this.socket, this.camera, this.#picture);
        this.#review = new Review(this, parts, this.#picture);
        this.#settings = new Settings(this, parts);
        this.#record = new Record(this, parts);
        this.#download = new Download(this, parts, this.#review);
        this.#stateLine = new StateLine(parts);
        this.#veil = new Veil(parts);
        new Features(this, parts);
        this.#regions = new RegionTool(this.#picture, parts, (name) => this.state.settingOf(this.camera, name),
            (values) => this.#settings.set(values));
        makeTabs(parts.tabs, parts, () => {})("look");
    }

    #listen() {
        const parts = this.#parts;
        parts.close.addEventListener("click",
            () => this.notices.watch(this.socket.ask("close", { camera: this.camera })));
        parts.filter.addEventListener("change", () => this.#picture.setFilter(parts.filter.value));
        this.#live.addEventListener("picture", ({ detail }) => this.#shown.showLive(detail));
        this.#live.addEventListener("silence", ({ detail }) => this.#veil.setSilence(detail));
        this.#review.addEventListener("frame", ({ detail }) => this.#shown.showRecorded(detail));
        this.root.addEventListener("keydown", (event) => this.#onKey(event));
    }

    /** Keys that step, mark and play, wherever on the card no control wants them itself. */
    #onKey(event) {
        const keys = {
            ArrowLeft: () => this.#review.step(-1), ArrowRight: () => this.#review.step(1),
            i: () => this.#parts.markIn.click(), o: () => this.#parts.markOut.click(),
            c: () => this.#view.toggleCrosshair(), " ": () => this.#review.togglePlaying(),
        };
        const act = keys[event.key];
        const isFree = !event.ctrlKey && !event.altKey && !event.metaKey && !event.target.matches(KEYS_OF_OTHERS);
        if (act !== undefined && isFree && (event.key === "c" || !this.#parts.review.hidden)) {
            event.preventDefault();
            act();
        }
    }
}
