// Tabs: one of them is in the order of the Tab key, arrow keys go between them.

/** Calls onShow(name) whenever a tab comes to the front. */
export function makeTabs(list, panels, onShow) {
    const tabs = [...list.querySelectorAll("[role=tab]")];

    function select(chosen, hasFocus) {
        for (const tab of tabs) {
            const isChosen = tab === chosen;
            tab.setAttribute("aria-selected", isChosen);
            tab.tabIndex = isChosen ? 0 : -1;
            panels[tab.dataset.tab].hidden = !isChosen;
        }
        if (hasFocus) {
            chosen.focus();
        }
        onShow(chosen.dataset.tab);
    }

    function onKey(event) {
        const at = tabs.indexOf(event.currentTarget);
        const next = {
            ArrowRight: (at + 1) % tabs.length,
            ArrowLeft: (at + tabs.length - 1) % tabs.length,
            Home: 0,
            End: tabs.length - 1,
        }[event.key];
        if (next !== undefined) {
            event.preventDefault();
            event.stopPropagation();
            select(tabs[next], true);
        }
    }

    for (const tab of tabs) {
        tab.addEventListener("click", () => select(tab, false));
        tab.addEventListener("keydown", onKey);
    }
    return (name) => select(tabs.find((tab) => tab.dataset.tab === name), false);
}
