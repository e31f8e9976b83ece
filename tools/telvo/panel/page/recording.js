// What the camera tells of a recording and of a frame in it, in words.

import { countText, numberText, relativeTimeText } from "./words.js";

/** The frames of a sequence between which its trigger lies, and whether that is approximate; null: there is none. */
export function triggerOf(sequence) {
    const trigger = sequence?.trigger ?? null;
    if (trigger === null) {
        return null;
    }
    const bounds = typeof trigger === "number" ? { first: trigger, last: trigger } : trigger;
    return { ...bounds, isApproximate: sequence.isTriggerApproximate === true };
}

export function recordedText({ frames, fps }) {
    return fps > 0 ? `${countText(frames, "frame")}, ${numberText(fps, 1)} frames/s` : countText(frames, "frame");
}

/** Of a frame's header. */
export function factsOf({ timeFromTrigger, isTriggerApproximate, counter, flags, mean }) {
    const facts = [];
    if (timeFromTrigger !== undefined) {
        const about = isTriggerApproximate ? "≈ " : "";
        facts.push(`${about}${relativeTimeText(timeFromTrigger / 1e6)} from the trigger`);
    }
    facts.push(`counter ${counter}`);
    if (flags?.length > 0) {
        facts.push(flags.join(", "));
    }
    facts.push(`mean ${numberText(mean, 1)}`);
    return facts.join(" · ");
}
