# SPDX-License-Identifier: MIT
"""Shows gdb how people write the library's records: GBox (0, 0, 0)-(1, 2, 3).

gdb loads this file with the library, beside which or below whose auto-load folder it lies. The
members of a record are shown by `print /r`.
"""

import gdb
import gdb.printing

# As many points of a polygon are shown.
MOST_POINTS = 16
# The limits of a bore line, and the corners of the canonical null box, that stand for none.
ENDLESS = 1e30
PLANES = 6


def number(value):
    text = repr(float(value))
    return text[:-2] if text.endswith(".0") else text


def numbers(values):
    return "(" + ", ".join(number(value) for value in values) + ")"


def components(record):
    return [record[field.name] for field in record.type.strip_typedefs().fields()]


def triple(record):
    return numbers(components(record))


def elements(array, count):
    return [array[i] for i in range(count)]


def rows(matrix, size):
    square = matrix["m_elements"]
    return " ".join(numbers(elements(square[i], size)) for i in range(size))


def homogeneous_rows(matrix):
    sixteen = elements(matrix["m_matrix"], 16)
    return " ".join(numbers(sixteen[i : i + 4]) for i in range(0, 16, 4))


def transformation(transf, size):
    parts = [
        rows(transf["m_matrix"], size),
        "translation " + triple(transf["m_translation"]),
        "scaling " + number(transf["m_scaling"]),
    ]
    for flag in ("Rotation", "Reflection", "Shear"):
        value = int(transf["m_has" + flag])
        if value:
            # Anything but 0 and 1 is a fault worth seeing.
            parts.append(flag.lower() + ("" if value == 1 else " flag %d" % value))
    return ", ".join(parts)


def distance_tolerance():
    """The tolerance of the process, or None where the library's symbols were stripped."""
    name = "'kvgeom::detail::g_distance_tolerance'"
    try:
        return float(gdb.parse_and_eval("*(double *) &" + name))
    except gdb.error:
        return None


def is_null(low, high):
    """What IsNull answers; without the tolerance, whether the box is reversed on some axis."""
    tolerance = distance_tolerance()
    if tolerance is None:
        return any(a > b for a, b in zip(low, high))
    return any(a - tolerance >= b for a, b in zip(low, high))


def box(value):
    low = [float(c) for c in components(value["m_low"])]
    high = [float(c) for c in components(value["m_high"])]
    corners = numbers(low) + "-" + numbers(high)
    if not is_null(low, high):
        return corners
    canonical = all(c == ENDLESS for c in low) and all(c == -ENDLESS for c in high)
    return "null" if canonical else "null " + corners


def clip_volume(value):
    count = int(value["m_count"])
    used = min(count, PLANES)
    planes = [numbers(elements(value["m_planes"][i], 4)) for i in range(used)]
    heading = "%d plane%s" % (used, "" if used == 1 else "s")
    if count > PLANES:
        heading += " (m_count is %d)" % count
    return " ".join([heading] + planes)


def limits(value):
    back, front = float(value["m_back"]), float(value["m_front"])
    return "back %s, front %s" % (
        "none" if back <= -ENDLESS else number(back),
        "none" if front >= ENDLESS else number(front),
    )


def bore_line(value):
    return "%s along %s, %s, radius %s" % (
        triple(value["m_point"]),
        triple(value["m_direction"]),
        limits(value),
        number(value["m_radius"]),
    )


def bore_cone(value):
    return bore_line(value["m_boreLine"]) + ", eye " + triple(value["m_eye"])


def polygon(value):
    count = int(value["m_count"])
    points = value["m_points"]
    heading = "%d point%s" % (count, "" if count == 1 else "s")
    shown = []
    try:
        for i in range(min(count, MOST_POINTS)):
            shown.append(triple((points + i).dereference()))
    except gdb.MemoryError:
        shown.append("unreadable at 0x%x" % int(points + len(shown)))
    else:
        if count > MOST_POINTS:
            shown.append("...")
    return " ".join([heading] + shown)


def fence(value):
    return "%s, along %s, %s" % (polygon(value), triple(value["m_direction"]), limits(value))


def frustum(value):
    return fence(value["m_fence"]) + ", eye " + triple(value["m_eye"])


def prism(value):
    return "%s, height %s, frame %s" % (
        polygon(value),
        number(value["m_height"]),
        transformation(value["m_transf"], 3),
    )


WRITERS = {
    "GVector": triple,
    "GUnitVector": triple,
    "GPosition": triple,
    "GVector2d": triple,
    "GUnitVector2d": triple,
    "GPosition2d": triple,
    "GMatrix": lambda value: rows(value, 3),
    "GMatrix2d": lambda value: rows(value, 2),
    "GTransf": lambda value: transformation(value, 3),
    "GTransf2d": lambda value: transformation(value, 2),
    "G4x4": homogeneous_rows,
    "GBox": box,
    "GBox2d": box,
    "GClipVolume": clip_volume,
    "GBoreLine": bore_line,
    "GBoreCone": bore_cone,
    "GPtFence": fence,
    "GPtFrustum": frustum,
    "GRtPrism": prism,
}


def printer_of(name, write):
    class Printer:
        def __init__(self, value):
            is_reference = value.type.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF)
            self.value = value.referenced_value() if is_reference else value

        def to_string(self):
            # What can't be read, or has other members than ours, must not spoil the whole view.
            try:
                return name + " " + write(self.value)
            except Exception as fault:
                return "%s <%s>" % (name, fault)

    return Printer


def printers():
    collection = gdb.printing.RegexpCollectionPrettyPrinter("kvgeom")
    for name, write in WRITERS.items():
        collection.add_printer(name, "^tag%s$" % name, printer_of(name, write))
    return collection


gdb.printing.register_pretty_printer(gdb.current_objfile(), printers(), replace=True)
