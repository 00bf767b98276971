"""What the X server keeps for a program, counted by the server itself (X-Resource) over all of its connections."""
import collections

from Xlib import X
from Xlib.ext import res


def _connections(display, process):
    found = display.res_query_client_ids([{"client": 0, "mask": res.LocalClientPIDMask}]).ids
    return [each.spec.client for each in found if process in each.value]


def _properties(display, window):
    """How many properties a window has, and their bytes."""
    window = display.create_resource_object("window", window)
    found = [window.get_property(each, X.AnyPropertyType, 0, 0) for each in window.list_properties()]
    return sum(each is not None for each in found), sum(each.bytes_after for each in found if each is not None)


def count(display, process):
    """Amounts by name: connections, each type of resource, bytes of pixmaps, properties of windows."""
    total = collections.Counter()
    # The server lists one resource for each id: a window whose selections are followed only as such.
    windows = [display.intern_atom(name) for name in ("WINDOW", "XFixesSelectionWindow")]
    for client in _connections(display, process):
        total["connections"] += 1
        for each in display.res_query_client_resources(client).types:
            total[display.get_atom_name(each.resource_type)] += each.count
        pixmaps = display.res_query_client_pixmap_bytes(client)
        total["pixmap bytes"] += pixmaps.bytes + (pixmaps.bytes_overflow << 32)
        for each in display.res_query_resource_bytes(client, [{"resource": 0, "type": 0}]).sizes:
            if each.size.type in windows:
                properties, size = _properties(display, each.size.resource)
                total["properties"] += properties
                total["property bytes"] += size
    return total
