"""Watching the counter that the library writes while a call runs."""
import ctypes
import threading

INTERVAL = 0.05


class Watch:
    """Calls back with the counter's value while the body of a `with` runs, from a thread, and at the end once more.

    The calls come from one thread at a time. What the callback raises is raised again after the body, whose call into
    the library cannot be ended half-way.
    """

    def __init__(self, callback):
        self.counter = ctypes.c_uint32(0)
        self._callback = callback
        self._done = threading.Event()
        self._seen = None
        self._failure = None
        self._thread = threading.Thread(target=self._watch, daemon=True) if callback else None

    def __enter__(self):
        if self._thread:
            self._thread.start()
        return self.counter

    def __exit__(self, kind, value, trace):
        if self._thread is None:
            return
        self._done.set()
        self._thread.join()
        if kind is None:
            self._report()
            if self._failure is not None:
                raise self._failure

    def _watch(self):
        while not self._done.wait(INTERVAL):
            self._report()

    def _report(self):
        value = self.counter.value
        if self._failure is not None or value == self._seen:
            return
        self._seen = value
        try:
            self._callback(value)
        except BaseException as failure:  # handed to the caller's thread, whatever it is
            self._failure = failure
