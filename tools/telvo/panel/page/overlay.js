// What is drawn over a picture: crosshair, regions, the values of pixels.

import { VALUES_FROM } from "./viewport.js";

const DARK = "rgba(0, 0, 0, 0.75)";

/** A light line in a dark one shows on every picture. */
function strokeTwice(context, colour, draw) {
    for (const [style, width] of [[DARK, 3], [colour, 1]]) {
        context.strokeStyle = style;
        context.lineWidth = width * devicePixelRatio;
        context.beginPath();
        draw();
        context.stroke();
    }
}

export function drawCrosshair(context, viewport, point) {
    const { x, y } = viewport.toCanvas(point.x + 0.5, point.y + 0.5);
    const gap = Math.max(6 * devicePixelRatio, viewport.scale / 2);
    strokeTwice(context, "#ffd866", () => {
        for (const [fromX, fromY, toX, toY] of [
            [0, y, x - gap, y], [x + gap, y, viewport.width, y],
            [x, 0, x, y - gap], [x, y + gap, x, viewport.height],
        ]) {
            context.moveTo(fromX, fromY);
            context.lineTo(toX, toY);
        }
    });
}

/** A region with its name at its upper left corner; handles where it is being drawn. */
export function drawRegion(context, viewport, region, { name, colour, isEdited }) {
    const { x, y, width, height } = viewport.place(region);
    context.setLineDash(isEdited ? [] : [6 * devicePixelRatio, 4 * devicePixelRatio]);
    strokeTwice(context, colour, () => context.rect(x, y, width, height));
    context.setLineDash([]);
    if (x >= 0 && y >= 0) {
        drawLabel(context, name, x, y, colour);
    }
    if (isEdited) {
        drawHandle(context, x + width, y + height, colour);
    }
}

function drawLabel(context, text, x, y, colour) {
    context.font = `${12 * devicePixelRatio}px system-ui, sans-serif`;
    const height = 18 * devicePixelRatio;
    const width = context.measureText(text).width + 10 * devicePixelRatio;
    const top = Math.max(0, y - height);
    context.fillStyle = DARK;
    context.fillRect(x, top, width, height);
    context.fillStyle = colour;
    context.textBaseline = "middle";
    context.textAlign = "left";
    context.fillText(text, x + 5 * devicePixelRatio, top + height / 2);
}

function drawHandle(context, x, y, colour) {
    const size = 5 * devicePixelRatio;
    context.fillStyle = colour;
    context.fillRect(x - size, y - size, 2 * size, 2 * size);
}

/** Writes each value into its pixel, where pixels are large enough to hold it. */
export function drawValues(context, viewport, image) {
    if (image.values === null || viewport.scale < VALUES_FROM) {
        return;
    }
    const { region, width } = image.header;
    const seen = viewport.visible();
    context.font = `${Math.min(14 * devicePixelRatio, viewport.scale * 0.42)}px ui-monospace, monospace`;
    context.textAlign = "center";
    context.textBaseline = "middle";
    for (let y = seen.y; y < Math.min(seen.y + seen.height, region.y + region.height); y += 1) {
        for (let x = seen.x; x < Math.min(seen.x + seen.width, region.x + region.width); x += 1) {
            const value = image.values[(y - region.y) * width + x - region.x];
            const place = viewport.toCanvas(x + 0.5, y + 0.5);
            context.fillStyle = value > 127 ? "#000" : "#fff";
            context.fillText(value, place.x, place.y);
        }
    }
}
