#!/usr/bin/python3
"""Stands in for kelpa-view: writes down every message that it gets, and does what the messages' texts say."""
import os
import signal
import socket
import sys
import time

connection = socket.socket(fileno=3)
received = open(os.environ["FAKE_VIEW_LOG"], "a", encoding="utf-8")
received.write("started\n")
received.flush()
rest = b""
lines_taken = 0


def say(lines):
    try:
        connection.sendall(lines)
    except BrokenPipeError:
        pass    # it may be given back at any time, on a busy machine before it has begun


say(b"ready\n")
while True:
    try:
        more = connection.recv(4096)
    except ConnectionResetError:
        more = b""
    if not more:
        received.write("ended\n")
        sys.exit(0)
    *lines, rest = (rest + more).split(b"\n")
    for line in lines:
        lines_taken += 1
        text = line.decode()
        window = text.split("\t")[text.startswith("open\t")]
        received.write(text.replace("\t", " ") + "\n")
        received.flush()
        if text.endswith("crash"):
            os._exit(7)
        if text.endswith("sleep"):
            time.sleep(60)
        if text.endswith("stop"):
            os.kill(os.getpid(), signal.SIGSTOP)
        if text.endswith("babble"):
            say(b"\xff\xfe\\q\n\n" + b"x" * 200000 + b"\n1\taction\n9\taction\tskip\nwarning\tI am well\n")
        if text.endswith("use"):
            say(b"input\n")
        if "\tdo " in text:
            # What follows is what a person does: its name, then its fields.
            name, *fields = text.split("\tdo ", 1)[1].split("\t")[0].split("|")
            verb = (name,) if name in ("did", "closed") else ("action", name)
            say("\t".join((window, *verb, *fields)).encode() + b"\n")
        if text.endswith("press"):
            say(f"{window}\taction\tskip\n".encode())
    if lines:
        say(f"taken\t{lines_taken}\n".encode())
