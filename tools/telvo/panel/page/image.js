// A picture as it came, made into something that can be drawn.

/** {header, bitmap, values}: values are the pixels of a raw picture, else null. */
export async function decodeImage({ header, body }) {
    if (header.format === "jpeg") {
        const bitmap = await createImageBitmap(new Blob([body], { type: "image/jpeg" }));
        return { header, bitmap, values: null };
    }
    const bitmap = await createImageBitmap(greyImage(body, header.width, header.height));
    return { header, bitmap, values: body };
}

function greyImage(values, width, height) {
    const image = new ImageData(width, height);
    const pixels = new Uint32Array(image.data.buffer);
    for (let index = 0; index < pixels.length; index += 1) {
        pixels[index] = 0xff000000 | (values[index] * 0x010101);
    }
    return image;
}

const probe = new OffscreenCanvas(1, 1).getContext("2d", { willReadFrequently: true });

/**
 * The value at a pixel of the whole picture: {text, isExact}, or null outside. Of a preview that was
 * compressed or made smaller the value is near the pixel's.
 */
export function valueAt(image, x, y) {
    const { region, width, height } = image.header;
    const column = Math.floor(((x - region.x) * width) / region.width);
    const row = Math.floor(((y - region.y) * height) / region.height);
    if (column < 0 || row < 0 || column >= width || row >= height) {
        return null;
    }
    if (image.values !== null) {
        return { text: String(image.values[row * width + column]), isExact: true };
    }
    probe.drawImage(image.bitmap, column, row, 1, 1, 0, 0, 1, 1);
    const [red, green, blue] = probe.getImageData(0, 0, 1, 1).data;
    const isGrey = red === green && green === blue;
    return { text: isGrey ? String(red) : `${red} ${green} ${blue}`, isExact: false };
}
