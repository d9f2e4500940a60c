"""What the tests of a desk at rest share: the settings with which five minutes of the program are three seconds, what the
log tells of stops and starts, and a mouse that somebody moves meanwhile."""
import threading
import time

FAST = 100
LIMIT = 300 / FAST
HOURS = 600
SETTINGS = {"pref.work.time": HOURS, "stop_timer_after_mouse_stop": True}
STOPPED = "ticktack timer stoped"
STARTED = f"ticktack timer start {HOURS * 60}$"


class AtRest:
    """For a test of the desktop, which says how its mouse is moved for some seconds: `move`."""

    def begin(self, settings=None, speed=FAST, **options):
        return self.launch({**SETTINGS, **(settings or {})}, speed=speed, **options)

    def wait_stopped(self, program, times, seconds=LIMIT + 5):
        """Gives when so many stops had been told of; the first comes with the start of the work period."""
        program.wait_for(STOPPED, seconds, times=times)
        return time.monotonic()

    def keep_moving(self, seconds):
        mover = threading.Thread(target=self.move, args=[seconds])
        mover.start()
        self.addCleanup(mover.join)
        return mover

    def assert_stops_after_five_minutes_and_starts_with_the_next_input(self, source):
        program = self.begin()
        program.wait_for(f"Activity is heard of from {source}", 10)
        self.assertEqual(program.count("heard of"), 1)
        self.wait_stopped(program, 2)
        self.settle(0.5)
        self.assertEqual(program.count(STARTED), 1)
        self.move(0.1)
        program.wait_for(STARTED, 3, times=2)
        self.move(LIMIT + 1)
        moved = time.monotonic()
        self.assertEqual(program.count(STOPPED), 3, "it stopped under a moving mouse")
        self.assertAlmostEqual(self.wait_stopped(program, 4) - moved, LIMIT, delta=0.5)
        return program
