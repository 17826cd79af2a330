"""Files wherever fsspec finds them, written under a passing name and then renamed."""

import contextlib
import os
import uuid
from types import TracebackType
from typing import IO, Any, Iterator, List, NamedTuple, Optional, Type

import fsspec


class Storage:
    """A folder and what is below it. Names are relative to it."""

    def __init__(self, url: str) -> None:
        self.url = url
        self._files, root = fsspec.core.url_to_fs(url)
        self._root = str(root)

    def make_folder(self, name: str = "") -> None:
        self._files.makedirs(self._path(name), exist_ok=True)

    def names(self, folder: str = "") -> List[str]:
        """What is in a folder, without the names of folders before it; nothing where there is none."""
        self._files.invalidate_cache()
        if not self._files.exists(self._path(folder)):
            return []
        found = self._files.ls(self._path(folder), detail=False)
        return sorted(path.rstrip("/").rsplit("/", 1)[-1] for path in found)

    def read(self, name: str) -> bytes:
        content: bytes = self._files.cat_file(self._path(name))
        return content

    def write(self, name: str, content: bytes) -> None:
        with Passing(self, name) as file:
            file.write(content)

    def remove_passing(self, folder: str) -> None:
        """Removes what a run that was ended has left."""
        for name in self.names(folder):
            if name.startswith("."):
                with contextlib.suppress(FileNotFoundError):
                    self._files.rm_file(self._path(folder + "/" + name))

    def open(self, name: str) -> IO[bytes]:
        file: IO[bytes] = self._files.open(self._path(name), "wb")
        return file

    def rename(self, name: str, to: str) -> None:
        self._files.mv(self._path(name), self._path(to))

    def remove(self, name: str) -> None:
        self._files.rm_file(self._path(name))

    def _path(self, name: str) -> str:
        return self._root.rstrip("/") + "/" + name if name else self._root


class Passing:
    """A file that has its name when all of it is written, and until then another one. It is made when it is needed."""

    def __init__(self, storage: Storage, name: str) -> None:
        folder, _, last = name.rpartition("/")
        self._storage = storage
        self._name = name
        self._passing = "%s.%s.%s" % (folder + "/" if folder else "", last, uuid.uuid4().hex)
        self._file: Optional[IO[bytes]] = None

    def make(self) -> IO[bytes]:
        """Now, whether anything will be written or not."""
        if self._file is None:
            self._file = self._storage.open(self._passing)
        return self._file

    def write(self, content: bytes) -> None:
        if content:
            self.make().write(content)

    def finish(self) -> None:
        """Gives the file its name. Where nothing was written there is none."""
        if self._file is None:
            return
        self._file.flush()
        with contextlib.suppress(AttributeError, OSError, ValueError):  # of what is no file of this machine
            os.fsync(self._file.fileno())
        file, self._file = self._file, None
        try:
            file.close()
            self._storage.rename(self._passing, self._name)
        except BaseException:
            self._remove()
            raise

    def __enter__(self) -> "Passing":
        return self

    def __exit__(self, kind: Optional[Type[BaseException]], error: Optional[BaseException],
                 trace: Optional[TracebackType]) -> None:
        if kind is None:
            self.finish()
        elif self._file is not None:
            with contextlib.suppress(Exception):
                self._file.close()
            self._remove()

    def _remove(self) -> None:
        with contextlib.suppress(Exception):
            self._storage.remove(self._passing)


class Source(NamedTuple):
    """A file of the input."""

    name: str
    """As it was given."""

    url: str
    """Wherever the process is that reads it."""

    size: int
    modified: str
    """When it was last; "" where that is not known."""


def absolute(url: str) -> str:
    return url if "://" in url else os.path.abspath(url)


def found(url: str) -> List[Source]:
    """The files that a URL or a pattern stands for."""
    files, path = fsspec.core.url_to_fs(url)
    if not fsspec.core.has_magic(path):
        return [Source(url, absolute(url), int(files.size(path)), _modified(files, path))]
    paths = [str(each) for each in sorted(files.glob(path))]
    if not paths:
        raise FileNotFoundError("%s stands for no file" % url)
    names = [str(files.unstrip_protocol(each)) for each in paths] if "://" in url else paths
    return [
        Source(name, name, int(files.size(each)), _modified(files, each)) for name, each in zip(names, paths)
    ]


def _modified(files: Any, path: str) -> str:
    try:
        return str(files.modified(path))
    except NotImplementedError:
        return ""


def blocks(url: str, start: int, end: int, size: int) -> Iterator[bytes]:
    """The bytes of a file from `start` to before `end`."""
    files, path = fsspec.core.url_to_fs(url)
    with files.open(path, "rb") as file:
        file.seek(start)
        while start < end:
            block: bytes = file.read(min(size, end - start))
            if not block:
                raise EOFError("%s is shorter than it was" % url)
            start += len(block)
            yield block
