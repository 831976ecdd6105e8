#!/usr/bin/env python3
"""mount_profile.py FILE...: the mounts of agents, through the library's C interface.

As a module: `parse( "profiles/Fan" )` yields the profile as the dictionaries and lists of its JSON document.
"""
import ctypes
import json
import os
import sys

VALID = 1
MESSAGE = 0

library = ctypes.CDLL(os.environ.get("CORVID_MOUNT_PROFILE_LIBRARY", "libCorvidMountProfileHdlr.so.1"))
library.corvid_mount_profile_parse.argtypes = [ctypes.c_char_p, ctypes.c_void_p, ctypes.POINTER(ctypes.c_void_p)]
library.corvid_mount_profile_status_text.restype = ctypes.c_char_p
library.corvid_mount_profile_outcome.argtypes = [ctypes.c_void_p]
library.corvid_mount_profile_json.argtypes = [ctypes.c_void_p, ctypes.c_void_p]
library.corvid_mount_profile_json.restype = ctypes.c_char_p
library.corvid_mount_profile_error_text.argtypes = [ctypes.c_void_p, ctypes.c_int, ctypes.c_void_p]
library.corvid_mount_profile_error_text.restype = ctypes.c_char_p
library.corvid_mount_profile_free.argtypes = [ctypes.c_void_p]


class ProfileError(Exception):
    """An agent file that yields no profile; the text tells where and why."""


def parse(agent_file):
    """The agent's profile. Raises ProfileError."""
    result = ctypes.c_void_p()
    status = library.corvid_mount_profile_parse(os.fsencode(agent_file), None, ctypes.byref(result))
    if status != 0:
        raise ProfileError(library.corvid_mount_profile_status_text(status).decode())
    try:
        if library.corvid_mount_profile_outcome(result) != VALID:
            raise ProfileError(library.corvid_mount_profile_error_text(result, MESSAGE, None).decode())
        return json.loads(library.corvid_mount_profile_json(result, None))["profile"]
    finally:
        library.corvid_mount_profile_free(result)


def text(stored):
    """A text of the profile for people: each character of a stored one is a byte of the file."""
    return stored.encode("latin-1").decode("utf-8", "surrogateescape")


def main(agent_files):
    sys.stdout.reconfigure(errors="surrogateescape")
    status = 0
    for agent_file in agent_files:
        try:
            profile = parse(agent_file)
        except ProfileError as error:
            sys.stdout.flush()
            print(error, file=sys.stderr)
            status = 1
            continue
        for name, group in profile["mountGroup"].items():
            for mount in group["mountProfile"]:
                print(text(f'{profile["name"]} {name}: {mount["path"]} as {mount["type"]}, {mount["flags"]}'))
    return status


if __name__ == "__main__":
    if len(sys.argv) < 2:
        print("usage: mount_profile.py FILE...", file=sys.stderr)
        sys.exit(2)
    sys.exit(main(sys.argv[1:]))
