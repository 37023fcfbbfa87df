#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Makes the enciphered texts that cipher_test.cpp holds as examples, from docs/cipher.md alone.

Every key, every AES block and every enciphered byte comes from the openssl command line program;
that program has no GCM, so the tag's polynomial hash (NIST SP 800-38D, 6.4) is here.
"""
import subprocess


def openssl(*arguments, data=b""):
    return subprocess.run(["openssl", *arguments], input=data, stdout=subprocess.PIPE, check=True).stdout


def kdf(name, *options):
    arguments = [part for option in options for part in ("-kdfopt", option)]
    return openssl("kdf", "-binary", "-keylen", "64", *arguments, name)


def aes_block(key, block):
    return openssl("enc", "-aes-256-ecb", "-nopad", "-K", key.hex(), data=block)


def multiply(left, right):
    product = 0
    for bit in range(127, -1, -1):
        if (left >> bit) & 1:
            product ^= right
        right = (right >> 1) ^ (0xE1 << 120 if right & 1 else 0)
    return product


def gcm(key, nonce, associated, text):
    enciphered = openssl("enc", "-aes-256-ctr", "-K", key.hex(), "-iv", (nonce + b"\0\0\0\2").hex(), data=text)
    pad = lambda part: part + bytes(-len(part) % 16)
    lengths = (8 * len(associated)).to_bytes(8, "big") + (8 * len(enciphered)).to_bytes(8, "big")
    hashed = pad(associated) + pad(enciphered) + lengths
    subkey = int.from_bytes(aes_block(key, bytes(16)), "big")
    state = 0
    for at in range(0, len(hashed), 16):
        state = multiply(state ^ int.from_bytes(hashed[at:at + 16], "big"), subkey)
    mask = int.from_bytes(aes_block(key, nonce + b"\0\0\0\1"), "big")
    return enciphered + (state ^ mask).to_bytes(16, "big")


def encipher(kind, cost, derived, salt, nonce, units):
    text = b"".join(unit.to_bytes(2, "little") for unit in units)
    header = b"QAES" + bytes([1, kind, *cost, 0, 0, 0]) + len(text).to_bytes(8, "little")
    header += salt + nonce + derived[32:]
    return header + gcm(derived[:32], nonce, header, text)


def units(text):
    data = text.encode("utf-16-le", "surrogatepass")
    return [int.from_bytes(data[at:at + 2], "little") for at in range(0, len(data), 2)]


def show(name, data):
    print(name)
    for at in range(0, len(data), 32):
        print('    "' + data[at:at + 32].hex() + '"')


SALT = bytes(range(0x20, 0x40))
NONCE = bytes(range(0x40, 0x4C))
RAW_KEY = bytes(range(32))

raw = kdf("HKDF", "digest:SHA256", "hexkey:" + RAW_KEY.hex(), "hexsalt:" + SALT.hex(),
          "hexinfo:" + b"QAES 1 raw key".hex())
show("raw key 000102...1f", encipher(2, (0, 0, 0), raw, SALT, NONCE, units("<a>\u00e9\U0001F600\ud800\0</a>")))

password = "p\u00e4ss".encode("utf-16-le")
derived = kdf("SCRYPT", "hexpass:" + password.hex(), "hexsalt:" + SALT.hex(), "n:1024", "r:8", "p:2",
              "maxmem_bytes:67108864")
show("password p\u00e4ss, N 1024, r 8, p 2", encipher(1, (10, 8, 2), derived, SALT, NONCE, units("<order/>")))

derived = kdf("SCRYPT", "pass:", "hexsalt:" + SALT.hex(), "n:2", "r:1", "p:1")
show("empty password, N 2, r 1, p 1", encipher(1, (1, 1, 1), derived, SALT, NONCE, units("<order/>")))
