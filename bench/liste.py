"""The file formats the benchmarks write: strings behind their length, and file lists (.el)."""
import struct


def stringa(x):
    return struct.pack('<i', len(x)) + x


def lista(base, voci):
    """A file list: the count, the base folder, the names, then the sizes."""
    return (struct.pack('<i', len(voci)) + stringa(base) + b''.join(stringa(n) for n, _ in voci)
            + b''.join(struct.pack('<i', z) for _, z in voci))
