#!/usr/bin/python3
# Prints the focusable controls of a running Mixorama as a screen reader sees them over AT-SPI:
# role, name and the labels they are labelled by. Needs python3-pyatspi and an accessibility bus:
#
#   dbus-run-session -- bash -c '/usr/libexec/at-spi-bus-launcher --launch-immediately &
#       sleep 1; QT_ACCESSIBILITY=1 QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 build/bin/mixorama FILE &
#       sleep 6; scripts/atspi-dump.py'
import pyatspi

SHOWN_ROWS = 1  # of a table or list, only the first row


def walk(accessible, depth=0):
    try:
        role, name = accessible.getRoleName(), accessible.name
    except Exception:  # a control that went away while it was read
        return
    if accessible.getState().contains(pyatspi.STATE_FOCUSABLE):
        labels = [r.getTarget(0).name for r in accessible.getRelationSet()
                  if r.getRelationType() == pyatspi.RELATION_LABELLED_BY]
        print("  " * depth + f"{role}: {name!r}" + (f" labelled by {labels}" if labels else ""))
    rows = SHOWN_ROWS if role in ("table", "tree table", "tree", "list") else accessible.childCount
    for i in range(min(rows, accessible.childCount)):
        walk(accessible.getChildAtIndex(i), depth + 1)


desktop = pyatspi.Registry.getDesktop(0)
for i in range(desktop.childCount):
    application = desktop.getChildAtIndex(i)
    if application and "mixorama" in (application.name or "").lower():
        walk(application)
