// What went wrong, or was done, in a line that stays until it is put away or its time is over.

import { element } from "./dom.js";

const GOOD_NEWS_LASTS = 6000; // ms
const MOST = 4;

export class Notices {
    #list;

    constructor(list) {
        this.#list = list;
    }

    /** Failures stay until they are put away. */
    failure(text) {
        this.#add(text, "failure");
    }

    news(text) {
        const notice = this.#add(text, "news");
        setTimeout(() => notice.remove(), GOOD_NEWS_LASTS);
    }

    /** The result of a question to the program, or undefined after saying why there is none. */
    async watch(promise) {
        try {
            return await promise;
        } catch (error) {
            this.failure(error.message);
            return undefined;
        }
    }

    #add(text, kind) {
        const close = element("button", { type: "button", "aria-label": "Put this message away",
            onclick: () => notice.remove() }, "×");
        const notice = element("p", { class: `notice ${kind}` }, element("span", {}, text), close);
        this.#list.append(notice);
        while (this.#list.children.length > MOST) {
            this.#list.firstElementChild.remove();
        }
        return notice;
    }
}
