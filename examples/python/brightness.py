#!/usr/bin/python3
"""Records a moment and looks at its brightness: a histogram of all pixels, and a curve over time.

usage: brightness.py ADDRESS PICTURE.png

Each part that begins with "# %%" is a cell for editors that run such files like a notebook.
"""

# %% What we need
import sys

import matplotlib

matplotlib.use("Agg")  # into a file; leave it out in a notebook
import numpy as np
import telvo
from matplotlib import pyplot

address, picture = sys.argv[1:]

# %% Record 500 frames with 1000 frames per second, and read them
with telvo.Camera(address) as camera:
    camera.width, camera.height = 640, 480
    camera.frame_rate = 1000
    images = camera.record(frames=500)[:500]

print(f"{len(images)} frames of {images.shape[2]}x{images.shape[1]}")

# %% Were any lost? When was each taken?
headers = telvo.headers(images)
lost = np.count_nonzero(np.diff(headers["counter"]) != 1)  # both are 16 bits, so a wrap is no gap
milliseconds = (headers["value"] - headers["value"][0]) / 1000
print(f"{lost} gaps, {milliseconds[-1]:.0f} ms")

# %% Brightness of all pixels together, and of each frame
pixels = images.reshape(len(images), -1)[:, 16:]  # the first 16 bytes are the header
histogram = np.bincount(pixels.ravel(), minlength=256)
brightness = pixels.mean(axis=1)
print(f"brightness {brightness.min():.1f} to {brightness.max():.1f}")

# %% Both as a picture
figure, (left, right) = pyplot.subplots(1, 2, figsize=(11, 4), layout="constrained")
left.bar(range(256), histogram, width=1)
left.set(title="Histogram", xlabel="pixel value", ylabel="pixels")
right.plot(milliseconds, brightness)
right.set(title="Brightness over time", xlabel="ms", ylabel="mean pixel value")
figure.savefig(picture)
print(picture)
