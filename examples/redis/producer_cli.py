#!/usr/bin/env python3
# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0
"""A robot that keeps its memory on a Redis server, with redis-cli: producer_cli.py HOST PORT ROBOT"""
import json
import subprocess
import sys
import time

host, port, robot = sys.argv[1:4]


def command(*words):
    redis_cli = ["redis-cli", "-e", "-h", host, "-p", port]
    subprocess.run(redis_cli + [str(word) for word in words], check=True, stdout=subprocess.DEVNULL)


memory = "mem:{%s}:" % robot
command("SADD", memory + "data", "Arm/Temperature", "Arm/Position")
command("SADD", memory + "event", "Bumper")
for step in range(5):
    command("SET", memory + "v:Arm/Temperature", json.dumps(20.5 + step))
    command("XADD", memory + "v:Arm/Position", "MAXLEN", "~", 10000, "*", "t", time.time(), "v", json.dumps([step, -step]))
command("XADD", memory + "e:Bumper", "MAXLEN", "~", 10000, "*", "t", time.time(), "v", json.dumps("left"))
