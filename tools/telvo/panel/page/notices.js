// What went wrong, or was done, in a line that stays until it is put away or its time is over.

import { element } from "./dom.js";

const GOOD_NEWS_LASTS = 6000; // ms
const MOST = 4;

export class Notices {
    #list;
    #passing = new Map(); // text -> {notice, timer}

    constructor(list) {
        this.#list = list;
    }

    /** Failures stay until they are put away. */
    failure(text) {
        this.#add(text, "failure");
    }

    /** What is told again before it has passed stays for another while, and is not read out again. */
    news(text) {
        const isThere = this.#passing.has(text);
        clearTimeout(this.#passing.get(text)?.timer);
        const notice = isThere ? this.#passing.get(text).notice : this.#add(text, "news");
        const timer = setTimeout(() => {
            this.#passing.delete(text);
            notice.remove();
        }, GOOD_NEWS_LASTS);
        this.#passing.set(text, { notice, timer });
    }

    /** No failure, and worth reading even later. */
    remark(text) {
        this.#add(text, "news");
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
