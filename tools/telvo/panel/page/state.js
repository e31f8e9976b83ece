// What the program says of cameras, recordings and downloads; every tab is told the same.

/**
 * Events, once what they tell is stored: "cameras", "downloads", "log" (detail: text), "end", and with the
 * camera as detail "state", "settings", "recording"; "curve" has the message as detail.
 */
export class PanelState extends EventTarget {
    #socket;
    hello = null; // version, folder, formats
    cameras = []; // as found
    files = []; // finished downloads
    jobs = new Map(); // number -> newest message
    #states = new Map();
    #settings = new Map();
    #sequences = new Map();
    #recordings = new Map(); // camera -> how many there were

    constructor(socket) {
        super();
        this.#socket = socket;
        socket.addEventListener("event", ({ detail }) => this.#onEvent(detail));
    }

    /** After each connection: all that is known. */
    async greet() {
        const hello = await this.#socket.ask("hello");
        this.hello = hello;
        this.files = hello.downloads ?? [];
        this.#onCameras(hello.cameras);
        this.#tell("downloads");
    }

    /** Whether the program has the camera, or will have it once the link is there. */
    isHeld({ camera, open }) {
        return open || ["connecting", "lost"].includes(this.stateOf(camera).state);
    }

    stateOf(camera) {
        return this.#states.get(camera) ?? { state: "closed", text: "" };
    }

    settingsOf(camera) {
        return this.#settings.get(camera) ?? [];
    }

    settingOf(camera, name) {
        return this.settingsOf(camera).find((setting) => setting.name === name);
    }

    sequencesOf(camera) {
        return this.#sequences.get(camera) ?? [];
    }

    /** Counts the recordings that ended while the page was open. */
    recordingOf(camera) {
        return this.#recordings.get(camera) ?? 0;
    }

    async readSettings(camera) {
        const { settings } = await this.#socket.ask("settings", { camera });
        this.#keep(this.#settings, "settings", camera, settings);
    }

    async readRecording(camera) {
        const { sequences } = await this.#socket.ask("recording", { camera });
        this.#keep(this.#sequences, "recording", camera, sequences);
    }

    async readFiles() {
        this.files = (await this.#socket.ask("downloads")).files;
        this.#tell("downloads");
    }

    #onEvent(message) {
        switch (message.event) {
        case "cameras":
            this.#onCameras(message.cameras);
            break;
        case "state":
            this.#keep(this.#states, "state", message.camera, message);
            break;
        case "settings":
            this.#keep(this.#settings, "settings", message.camera, message.settings);
            break;
        case "recording":
            this.#recordings.set(message.camera, this.recordingOf(message.camera) + 1);
            this.readRecording(message.camera).catch(() => {}); // it may be gone again
            break;
        case "download":
            this.#onDownload(message);
            break;
        default:
            this.#tell(message.event, message);
        }
    }

    #onCameras(cameras) {
        this.cameras = cameras;
        this.#tell("cameras");
    }

    #onDownload(message) {
        this.jobs.set(message.job, message);
        this.#tell("downloads");
        if (message.state !== "running") {
            this.readFiles().catch(() => {});
        }
    }

    #keep(map, name, camera, value) {
        map.set(camera, value);
        this.#tell(name, camera);
    }

    #tell(name, detail = null) {
        this.dispatchEvent(new CustomEvent(name, { detail }));
    }
}
