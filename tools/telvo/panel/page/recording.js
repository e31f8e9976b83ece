// What the camera tells of a recording and of a frame in it, in words.

import { countText, numberText, relativeTimeText } from "./words.js";

/** The frames between which the trigger lies; null: there is none. */
export function boundsOf(trigger) {
    if (trigger === null || trigger === undefined) {
        return null;
    }
    return typeof trigger === "number" ? { first: trigger, last: trigger } : trigger;
}

export function recordedText({ frames, fps }) {
    return fps > 0 ? `${countText(frames, "frame")}, ${numberText(fps, 1)} frames/s` : countText(frames, "frame");
}

/** Of a frame's header. */
export function factsOf({ timeFromTrigger, counter, flags, mean }) {
    const facts = [];
    if (timeFromTrigger !== undefined) {
        facts.push(`${relativeTimeText(timeFromTrigger / 1e6)} from the trigger`);
    }
    facts.push(`counter ${counter}`);
    if (flags?.length > 0) {
        facts.push(flags.join(", "));
    }
    facts.push(`mean ${numberText(mean, 1)}`);
    return facts.join(" · ");
}
