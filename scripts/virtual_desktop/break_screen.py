"""What a person sees of a break: the windows that cover the screens and the countdown on them."""
import time

from .picture import Box
from .session import wait_until


def break_windows(session):
    """The windows that are titled as break windows are: with the number of their screen."""
    return session.screen.titled(lambda title: title.isdecimal())


def covers(window, monitor):
    return (window.x, window.y, window.width, window.height) == (monitor.x, monitor.y, monitor.width, monitor.height)


def wait_for_cover(session, monitors, seconds=10):
    """Waits until each of the monitors is covered by a break window of its own and nothing else is; gives the
    windows in the monitors' order."""
    def covered():
        windows = break_windows(session)
        found = [next((window for window in windows if covers(window, monitor)), None) for monitor in monitors]
        return found if all(found) and len(windows) == len(monitors) else None

    return wait_until(covered, seconds, f"break windows on {len(monitors)} monitors")


def wait_for_uncover(session, seconds=10):
    wait_until(lambda: not break_windows(session), seconds, "the break windows to close")


def wait_for_countdown(screen, monitor, seconds=10):
    """Waits until the break screen of a monitor has faded in and counts down; gives two pictures of it, of different
    counts. Else it raises TimeoutError with what is wrong. `screen` is whatever takes pictures."""
    wrong = []

    def counts():
        before = screen.picture(monitor)
        wait_until(lambda: before.differs(screen.picture(monitor)), 1.5)
        after = screen.picture(monitor)
        wrong[:] = complaints(before, after)
        return not wrong and (before, after)

    found = wait_until(counts, seconds)
    if not found:
        raise TimeoutError(f"no countdown on {monitor.name} within {seconds} s: {'; '.join(wrong)}")
    return found


def wait_for_still(screen, area, seconds=10, still=0.5):
    """Waits until something stands in an area and has not changed for a moment, as when it has faded in; gives its
    picture."""
    since, last = time.monotonic(), screen.picture(area)

    def rests():
        nonlocal since, last
        now = screen.picture(area)
        if last.differs(now) or now.ink_share() < 0.003:
            since, last = time.monotonic(), now
        return time.monotonic() - since >= still and now

    return wait_until(rests, seconds, "the end of a fade")


def wait_for_rest(screen, area, seconds=10):
    """Waits until a window has faded in: from then on nothing changes but lines of text. Gives its picture."""
    def rests():
        pictures = [screen.picture(area)]
        for _ in range(2):
            time.sleep(0.15)
            pictures.append(screen.picture(area))
        changes = [before.differs(after) for before, after in zip(pictures, pictures[1:])]
        return (pictures[-1].ink_share() > 0.003 and all(one is None or one.height < 40 for one in changes) and
                pictures[-1])

    return wait_until(rests, seconds, "the end of a fade")


def blue_rows(picture):
    """The blue things of a break window from top to bottom, as boxes in the picture: the link, then Skip."""
    rows = []
    for y in range(picture.height):
        row = picture.row(y)
        blue, green, red = row[0::4], row[1::4], row[2::4]
        columns = [x for x in range(picture.width) if blue[x] > 150 and red[x] < 120 and blue[x] > green[x] + 40]
        if not columns:
            continue
        if rows and rows[-1][1] == y - 1:
            top, _, left, right = rows[-1]
            rows[-1] = (top, y, min(left, columns[0]), max(right, columns[-1]))
        else:
            rows.append((y, y, columns[0], columns[-1]))
    return [Box(left, top, right - left + 1, bottom - top + 1)
            for top, bottom, left, right in rows if bottom - top >= 5]


def complaints(before, after):
    """What is wrong with two pictures of one break window, taken at different seconds of its countdown."""
    wrong = []
    share = after.ink_share()
    if not 0.003 < share < 0.3:
        wrong.append(f"{share:.1%} of the picture stands out from its background, which is no text on a screen")
    changed = before.differs(after)
    if changed is None:
        return wrong + ["nothing changed within a second, so no countdown runs"]
    middle = changed.x + changed.width / 2
    if not (0.25 < middle / after.width < 0.75 and changed.width < 0.6 * after.width):
        wrong.append(f"what changes does not stand in the middle: {changed}")
    if not 50 <= changed.height <= 250:
        wrong.append(f"what changes has not the height of a large figure: {changed}")
    top = max(changed.y - 4, 0)
    row = after.crop(Box(0, top, after.width, min(changed.height + 8, after.height - top)))
    if row.glyphs() != 5:
        wrong.append(f"the countdown's row holds {row.glyphs()} shapes and not two digits, a colon and two digits")
    return wrong
