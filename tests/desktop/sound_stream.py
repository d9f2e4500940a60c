"""A program that opens a stream from SOURCE without recording a thing: `meter`, to show how loud it is there, as mixers
do, or `corked`, held still. No tool does either. Runs until it is ended."""
import ctypes
import signal
import sys

READY, FLOAT, MOST = 4, 5, 2**32 - 1
FLAGS = {"meter": 0x0800 | 0x2000,      # PEAK_DETECT, ADJUST_LATENCY
         "corked": 0x0001}              # START_CORKED


class Specification(ctypes.Structure):
    _fields_ = [("format", ctypes.c_int), ("rate", ctypes.c_uint32), ("channels", ctypes.c_uint8)]


class Buffer(ctypes.Structure):
    _fields_ = [(name, ctypes.c_uint32) for name in ("most", "target", "first", "least", "fragment")]


def main(source, how):
    pulse = ctypes.CDLL("libpulse.so.0")
    for name in ("pa_mainloop_new", "pa_mainloop_get_api", "pa_context_new", "pa_stream_new"):
        getattr(pulse, name).restype = ctypes.c_void_p
    loop = ctypes.c_void_p(pulse.pa_mainloop_new())
    context = ctypes.c_void_p(pulse.pa_context_new(ctypes.c_void_p(pulse.pa_mainloop_get_api(loop)), b"mixer"))
    pulse.pa_context_connect(context, None, 0, None)
    while pulse.pa_context_get_state(context) < READY:
        pulse.pa_mainloop_iterate(loop, 1, None)
    kind = Specification(FLOAT, 25, 1)
    stream = ctypes.c_void_p(pulse.pa_stream_new(context, b"level", ctypes.byref(kind), None))
    buffer = Buffer(MOST, MOST, MOST, MOST, 4)
    if pulse.pa_stream_connect_record(stream, source.encode(), ctypes.byref(buffer), FLAGS[how]) != 0:
        sys.exit("the server refuses the stream")
    while True:
        pulse.pa_mainloop_iterate(loop, 1, None)


signal.signal(signal.SIGTERM, signal.SIG_DFL)
main(*sys.argv[1:])
