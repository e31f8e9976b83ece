// The marked range into a file: what to write, how far it is, what came of it.

import { element, setText } from "./dom.js";
import { bytesText, countText, durationText, numberText } from "./words.js";

const VIDEOS = new Set(["mkv", "mp4"]);
const FORMATS = {
    raw: "raw – all bytes as the camera sent them",
    tiff: "TIFF – a page for each frame",
    png: "PNG – a folder of pictures",
    mkv: "mkv – video, every pixel kept",
    mp4: "mp4 – small video for reports",
};

export class Download {
    #card;
    #parts;
    #review;
    #lines = new Map(); // job -> its element's parts

    constructor(card, parts, review) {
        this.#card = card;
        this.#parts = parts;
        this.#review = review;
        const form = parts.downloadForm;
        form.addEventListener("submit", (event) => {
            event.preventDefault();
            this.#start();
        });
        form.elements.format.addEventListener("change", () => this.#showOptions());
        form.elements.first.addEventListener("change", () => this.#mark());
        form.elements.last.addEventListener("change", () => this.#mark());
        review.marks.addEventListener("change", () => this.#showRange());
        review.addEventListener("sequence", () => this.#showRange());
        this.#showRange();
    }

    setFormats(formats) {
        const { format } = this.#parts.downloadForm.elements;
        if (format.options.length === 0) {
            format.append(...formats.map((name) => element("option", { value: name }, FORMATS[name] ?? name)));
            this.#showOptions();
        }
    }

    showJobs(jobs) {
        for (const job of jobs) {
            this.#showJob(job);
        }
    }

    showFiles(folder, files) {
        setText(this.#parts.folder, folder === undefined ? "" : `Files are kept in ${folder}`);
        this.#parts.files.replaceChildren(...files.map((file) => element("li", {}, nameOf(file),
            element("small", {}, [countText(file.frames ?? 0, "frame"), bytesText(file.bytes),
                wholeText(file.whole)].filter(Boolean).join(" · ")),
            file.sidecar ? element("a", { href: file.sidecar, download: "", class: "sidecar",
                "aria-label": `what is known of ${file.name}, JSON` }, "JSON") : null)));
        this.#parts.noFiles.hidden = files.length > 0;
    }

    #showOptions() {
        this.#parts.videoOptions.hidden = !VIDEOS.has(this.#parts.downloadForm.elements.format.value);
    }

    #showRange() {
        const { first, last } = this.#parts.downloadForm.elements;
        const { sequence, marks } = this.#review;
        first.value = marks.first;
        last.value = marks.last;
        first.max = last.max = Math.max(0, (sequence?.frames ?? 1) - 1);
        this.#parts.downloadStart.disabled = sequence === null;
        setText(this.#parts.rangeText, sequence === null ? "There is no recording yet."
            : `${countText(marks.count, "frame")} of sequence ${sequence.sequence}`);
    }

    #mark() {
        const { first, last } = this.#parts.downloadForm.elements;
        this.#review.marks.set(Number(first.value) || 0, Number(last.value) || 0);
    }

    async #start() {
        const { format, name, every, playbackFps, colour } = this.#parts.downloadForm.elements;
        const { sequence, marks } = this.#review;
        const { socket, camera, notices } = this.#card;
        this.#review.stopPlaying();
        const answer = await notices.watch(socket.ask("download", {
            camera, sequence: sequence.sequence, first: marks.first, count: marks.count, format: format.value,
            name: name.value.trim(),
            ...(Number(every.value) > 1 ? { every: Number(every.value) } : {}),
            ...(VIDEOS.has(format.value) ? { playbackFps: Number(playbackFps.value) } : {}),
            ...(colour.checked ? { colour: true } : {}),
        }));
        if (answer !== undefined) {
            name.value = nextName(name.value.trim());
        }
    }

    #showJob(job) {
        if (!this.#lines.has(job.job)) {
            this.#lines.set(job.job, this.#makeLine(job));
        }
        const line = this.#lines.get(job.job);
        const isRunning = job.state === "running";
        line.bar.max = Math.max(1, job.of ?? 1);
        line.bar.value = job.frames ?? 0;
        line.bar.hidden = !isRunning;
        line.cancel.hidden = !isRunning;
        line.root.dataset.state = isGood(job) ? "done" : job.state === "done" ? "incomplete" : job.state;
        setText(line.text, isRunning ? progressText(job) : endText(job));
        line.gaps.replaceChildren(...(job.verdict?.gaps ?? []).map((gap) => element("li", {}, gapText(gap))));
    }

    #makeLine({ job, name }) {
        const { socket, notices } = this.#card;
        const line = {
            bar: element("progress", { "aria-label": `progress of ${name}` }),
            text: element("span", { class: "job-text", role: "status" }),
            gaps: element("ul", { class: "gaps" }),
            cancel: element("button", { type: "button", "aria-label": `Cancel ${name}`,
                onclick: () => notices.watch(socket.ask("cancel", { job })) }, "Cancel"),
        };
        line.root = element("li", { class: "job", "data-job": job }, element("strong", {}, name), line.bar,
            line.text, line.gaps, line.cancel);
        this.#parts.jobs.prepend(line.root);
        return line;
    }
}

function isGood({ state, verdict }) {
    return state === "done" && verdict?.whole !== false;
}

function progressText({ frames = 0, of = 0, megabytesPerSecond, secondsLeft }) {
    const speed = megabytesPerSecond > 0 ? ` · ${numberText(megabytesPerSecond, 1)} MB/s` : "";
    const left = secondsLeft > 0 ? ` · ${durationText(secondsLeft)} left` : "";
    return `${numberText(frames)} of ${countText(of, "frame")}${speed}${left}`;
}

function endText({ state, frames, of, verdict, error }) {
    if (state === "cancelled") {
        return `cancelled after ${countText(frames ?? 0, "frame")}`;
    }
    if (state === "failed") {
        return `failed: ${error}`;
    }
    return verdictText(verdict, frames ?? of);
}

function verdictText(verdict, frames) {
    if (verdict === undefined || verdict === null) {
        return countText(frames, "frame");
    }
    const { whole, received, expected, missing } = verdict;
    return whole ? `✓ verified: ${numberText(received)} of ${countText(expected, "frame")}, none missing`
        : `${numberText(received)} of ${countText(expected, "frame")}${missing > 0 ? `, ${numberText(missing)} missing` : ""}`;
}

function gapText(gap) {
    return `after frame ${gap["behind-frames"]}: counter ${gap["from-counter"]} to ${gap["to-counter"]}, ` +
        `${countText(gap.missing, "frame")} missing`;
}

function nameOf({ name, url }) {
    return url ? element("a", { href: url, download: "" }, name) : element("span", {}, name);
}

function wholeText(whole) {
    return { true: "verified", false: "incomplete" }[whole] ?? "";
}

/** "shot" is followed by "shot-2", and that by "shot-3". */
function nextName(name) {
    const [, stem, number] = /^(.*?)(\d*)$/.exec(name);
    return number === "" ? `${stem}-2` : `${stem}${Number(number) + 1}`;
}
