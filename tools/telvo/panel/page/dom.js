// Elements made and found in one line each.

/** An element with attributes and children; null, undefined and false ones are left out. */
export function element(tag, attributes = {}, ...children) {
    const made = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes)) {
        if (name.startsWith("on")) {
            made.addEventListener(name.slice(2), value);
        } else if (name.startsWith("aria-")) {
            made.setAttribute(name, value);
        } else if (value === true) {
            made.setAttribute(name, "");
        } else if (value !== null && value !== undefined && value !== false) {
            made.setAttribute(name, value);
        }
    }
    made.append(...children.filter((child) => child !== null && child !== undefined));
    return made;
}

/** The parts of a template by their data-part, and its root under "root". */
export function fromTemplate(id) {
    const root = document.getElementById(id).content.firstElementChild.cloneNode(true);
    const parts = { root };
    for (const part of root.querySelectorAll("[data-part]")) {
        parts[part.dataset.part] = part;
    }
    return parts;
}

/** Writes a text only when it changes, so that screen readers hear changes alone. */
export function setText(target, text) {
    if (target.textContent !== text) {
        target.textContent = text;
    }
}

let lastId = 0;

/** An id for labels to refer to. */
export function uniqueId(prefix) {
    lastId += 1;
    return `${prefix}-${lastId}`;
}

/** At most one call per animation frame, with the newest arguments. */
export function oncePerFrame(callback) {
    let waiting = null;
    return (...values) => {
        if (waiting === null) {
            requestAnimationFrame(() => {
                const newest = waiting;
                waiting = null;
                callback(...newest);
            });
        }
        waiting = values;
    };
}

/** Calls back once no call has come for so many milliseconds. */
export function afterQuiet(milliseconds, callback) {
    let timer = 0;
    return () => {
        clearTimeout(timer);
        timer = setTimeout(callback, milliseconds);
    };
}
