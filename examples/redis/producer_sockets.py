#!/usr/bin/env python3
# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0
"""A robot that keeps its memory on a Redis server, with nothing but a socket: producer_sockets.py HOST PORT ROBOT"""
import json
import socket
import sys
import time

host, port, robot = sys.argv[1:4]
server = socket.create_connection((host, int(port)))
replies = server.makefile("rb")


def command(*words):
    words = [str(word).encode() for word in words]
    server.sendall(b"*%d\r\n" % len(words) + b"".join(b"$%d\r\n%s\r\n" % (len(word), word) for word in words))
    reply = replies.readline()
    if reply.startswith(b"-"):
        sys.exit(reply.decode())
    if reply.startswith(b"$"):
        replies.read(int(reply[1:]) + 2)


memory = "mem:{%s}:" % robot
command("SADD", memory + "data", "Arm/Temperature", "Arm/Position")
command("SADD", memory + "event", "Bumper")
for step in range(5):
    command("SET", memory + "v:Arm/Temperature", json.dumps(20.5 + step))
    command("XADD", memory + "v:Arm/Position", "MAXLEN", "~", 10000, "*", "t", time.time(), "v", json.dumps([step, -step]))
command("XADD", memory + "e:Bumper", "MAXLEN", "~", 10000, "*", "t", time.time(), "v", json.dumps("left"))
