"""Frame headers, and arrays over memory that is not theirs."""

from __future__ import annotations

import ctypes
import gc
import weakref

import numpy as np
import pytest
import telvo
from telvo._loan import Loan

FRAME = bytes(
    [9, 9, 9, 9, 0x34, 0x12, 9, 0xFA, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x87, 0xAB, 7, 8]
)


class Owner:
    pass


def lend(shape: tuple[int, ...]) -> tuple[Owner, ctypes.Array[ctypes.c_uint8], Loan]:
    memory = (ctypes.c_uint8 * int(np.prod(shape)))()
    owner = Owner()
    return owner, memory, Loan(owner, ctypes.addressof(memory), shape)


def test_a_header_is_read_out_of_the_first_16_bytes() -> None:
    header = telvo.headers(np.frombuffer(FRAME, np.uint8).reshape(2, 9))
    assert header.shape == ()
    assert header["counter"] == 0x1234
    assert header["flags"] == 0x05
    assert header["value"] == 0x87060504030201
    assert header["extra"] == 0xAB


def test_headers_keep_the_shape_of_the_frames() -> None:
    images = np.frombuffer(FRAME * 6, np.uint8).reshape(3, 2, 1, 18)
    images = images.copy()
    images[2, 1, 0, 4] = 0x35
    assert telvo.headers(images).shape == (3, 2)
    assert telvo.headers(images)["counter"].tolist() == [
        [0x1234, 0x1234],
        [0x1234, 0x1234],
        [0x1234, 0x1235],
    ]
    assert telvo.headers(images[:0]).shape == (0, 2)


def test_headers_of_every_other_frame() -> None:
    images = np.zeros((6, 4, 8), np.uint8)
    images[:, 0, 4] = range(6)
    assert telvo.headers(images[::2])["counter"].tolist() == [0, 2, 4]


def test_a_loan_shows_the_memory_itself_and_cannot_be_written() -> None:
    owner, memory, loan = lend((2, 3))
    array = loan.array()
    memory[4] = 77
    assert array.tolist() == [[0, 0, 0], [0, 77, 0]]
    with pytest.raises(ValueError):
        array[0, 0] = 1
    with pytest.raises(ValueError):
        array.flags.writeable = True


@pytest.mark.parametrize(
    "derive",
    [
        lambda array: array,
        lambda array: array[1:, ::2],
        lambda array: array.T[1:],
        lambda array: np.asarray(memoryview(array)),
        lambda array: array.view(np.int8).ravel(),
        lambda array: [array.flat],
    ],
    ids=["itself", "slice", "transposed", "memoryview", "other type", "iterator"],
)
def test_whatever_shows_the_memory_keeps_it_from_being_taken_back(derive) -> None:
    owner, memory, loan = lend((4, 4))
    shown = derive(loan.array())
    with pytest.raises(telvo.ViewInUseError):
        loan.take_back()
    loan.array()  # it stays as it was
    del shown
    loan.take_back()
    with pytest.raises(telvo.ViewExpiredError):
        loan.array()


def test_the_first_bytes_of_each_picture_are_a_copy() -> None:
    owner, memory, loan = lend((2, 4, 5))
    memory[0], memory[19], memory[20], memory[36] = 1, 2, 3, 4
    first = loan.first_bytes(17)
    loan.take_back()
    memory[0] = 9
    assert first == bytes([1, *[0] * 16, 3, *[0] * 15, 4])
    with pytest.raises(telvo.ViewExpiredError):
        loan.first_bytes(17)


def test_a_copy_keeps_nothing() -> None:
    owner, memory, loan = lend((4, 4))
    copy = loan.array().copy()
    loan.take_back()
    memory[0] = 1
    assert copy[0, 0] == 0


def test_a_view_keeps_the_owner_of_the_memory() -> None:
    owner, memory, loan = lend((4, 4))
    alive = weakref.ref(owner)
    array = loan.array()
    del owner
    gc.collect()
    assert alive() is not None
    del array
    assert alive() is None


def test_a_loan_ends_with_its_owner() -> None:
    owner, memory, loan = lend((4, 4))
    del owner
    gc.collect()
    with pytest.raises(telvo.ViewExpiredError):
        loan.array()
