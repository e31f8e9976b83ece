"""A camera's settings as attributes: one row of the table in camera.py each."""

from __future__ import annotations

import operator
from typing import TYPE_CHECKING, Any, Callable, Generic, NamedTuple, TypeVar, overload

from .errors import CallError, SettingError

if TYPE_CHECKING:
    from .camera import Camera

T = TypeVar("T")

_NO_VALUE = 0xFFFFFFFF  # what the library writes, or leaves, where the camera lacks the feature


class Limits(NamedTuple):
    """What a setting takes now."""

    minimum: float
    maximum: float


class Setting(Generic[T]):
    """An attribute of Camera that is read from the camera and written to it at every access.

    Raises SettingError where the camera lacks it or refuses a value.
    """

    def __init__(
        self,
        getter: str,
        setter: str | None,
        decode: Callable[[Any], T],
        encode: Callable[[T], Any],
        doc: str,
        *,
        position: int = -1,
        needs_idle: bool = False,
    ) -> None:
        """position: of the value among what the getter gives, which may give its limits first.

        needs_idle: the camera takes it only while it does nothing else.
        """
        self.__doc__ = doc
        self._getter = getter
        self._setter = setter
        self._decode = decode
        self._encode = encode
        self._position = position
        self._needs_idle = needs_idle

    def __set_name__(self, owner: type, name: str) -> None:
        self._name = name

    @overload
    def __get__(self, camera: None, owner: type) -> Setting[T]: ...

    @overload
    def __get__(self, camera: Camera, owner: type) -> T: ...

    def __get__(self, camera: Camera | None, owner: type) -> Setting[T] | T:
        if camera is None:
            return self
        return self._decode(self._read(camera)[self._position])

    def __set__(self, camera: Camera, value: T) -> None:
        if self._setter is None:
            raise AttributeError(f"{self._name} cannot be set")
        if self._needs_idle:
            camera._session.make_way()
        try:
            camera.write(self._setter, self._encode(value))
        except (CallError, ValueError) as error:
            raise SettingError(
                f"the camera refuses {self._name} = {value!r}{self._advice(camera)}"
            ) from error

    def limits(self, camera: Camera) -> Limits:
        """Raises SettingError for a setting whose limits the library does not tell."""
        values = self._read(camera)
        if len(values) != 3:
            raise SettingError(f"the library does not tell the limits of {self._name}")
        return Limits(*values[:2])

    def _read(self, camera: Camera) -> tuple[Any, ...]:
        try:
            values = camera.read(self._getter)
        except CallError as error:
            raise SettingError(f"the camera does not tell its {self._name}") from error
        if values[self._position] == _NO_VALUE:
            camera._session.fail(SettingError(f"the camera has no {self._name}"))
        return values

    def _advice(self, camera: Camera) -> str:
        try:
            return "; it takes {} to {}".format(*self.limits(camera))
        except SettingError:
            return ""


def number(getter: str, setter: str | None, doc: str, **options: Any) -> Setting[int]:
    return Setting(getter, setter, int, operator.index, doc, **options)


def real(getter: str, setter: str, doc: str) -> Setting[float]:
    return Setting(getter, setter, float, float, doc)


def switch(getter: str, setter: str | None, doc: str) -> Setting[bool]:
    return Setting(getter, setter, bool, int, doc)


def choice(getter: str, setter: str, words: tuple[str, ...], doc: str) -> Setting[str]:
    return Setting(getter, setter, words.__getitem__, words.index, f"{doc}: {', '.join(words)}")
