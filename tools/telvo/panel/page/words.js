// Numbers and times as an operator reads them.

export function numberText(value, digits = 0) {
    return value.toLocaleString("en-US", { minimumFractionDigits: digits, maximumFractionDigits: digits })
        .replaceAll(",", "\u202f");
}

export function shareText(count, all) {
    return all > 0 ? `${numberText((100 * count) / all, 1)} %` : "0.0 %";
}

/** Seconds from the trigger in the unit that fits: "+12.500 ms". */
export function relativeTimeText(seconds) {
    const sign = seconds < 0 ? "\u2212" : "+";
    const size = Math.abs(seconds);
    return size < 1 ? `${sign}${numberText(size * 1000, 3)} ms` : `${sign}${numberText(size, 4)} s`;
}

/** "4.2 s", "3:07" */
export function durationText(seconds) {
    if (seconds < 60) {
        return `${numberText(seconds, 1)} s`;
    }
    const whole = Math.floor(seconds);
    return `${Math.floor(whole / 60)}:${String(whole % 60).padStart(2, "0")}`;
}

export function bytesText(bytes) {
    const units = ["B", "kB", "MB", "GB", "TB"];
    let size = bytes;
    let unit = 0;
    while (size >= 1000 && unit < units.length - 1) {
        size /= 1000;
        unit += 1;
    }
    return `${numberText(size, unit === 0 ? 0 : 1)} ${units[unit]}`;
}

export function clockText(date) {
    return date.toLocaleTimeString("en-GB");
}

/** "1 frame", "12 frames" */
export function countText(count, noun) {
    return `${numberText(count)} ${noun}${count === 1 ? "" : "s"}`;
}
