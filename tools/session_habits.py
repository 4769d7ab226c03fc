"""Session logs that look like life: who was connected when, how long and for how much.

Each user has one of a few habits, with deviations of their own. Over the years there are more
sessions on faster connections. The household has holidays, on which nobody is there.
"""
import heapq
import math
from dataclasses import dataclass
from datetime import date, timedelta
from random import Random

HOUR = 3600
DAY = 24 * HOUR
SESSION_GROWTH = 1.06  # in a year
SPEED_GROWTH = 1.3
CLOSEST_STARTS = 60  # seconds
PAUSE = 5
SHORTEST_SESSION = 20

FIRST_NAMES = (
    "Anna", "Erik", "Karin", "Oliver", "Maja", "Lars", "Emma", "Göran", "Alice", "Sven", "Märta",
    "Nils", "Åsa", "Henry", "Ingrid", "William", "Elsa", "George", "Lena", "Oskar", "Charlotte",
    "Björn", "Lucy", "Fredrik",
)


@dataclass(frozen=True)
class Habit:
    """What is true of a user on an average day of the first year."""

    name: str
    days: tuple  # how likely the user is there, Monday to Sunday
    work: tuple  # hours of a work day; those past 24 are the first of the day
    weekend: tuple
    sessions: float  # of a day
    minutes: float  # of the median session
    speed: float  # bytes received in a second
    upload: float  # bytes sent for one received


HABITS = (
    Habit("school child", (0.7,) * 5 + (0.95, 0.9), (15, 20), (9, 21), 2.5, 15, 4_000, 0.06),
    Habit("office hours", (0.9,) * 5 + (0.06, 0.03), (8, 17), (10, 16), 4, 35, 3_000, 0.4),
    Habit("night owl", (0.75,) * 4 + (0.95, 0.95, 0.8), (21, 27), (22, 29), 3, 60, 9_000, 0.12),
    Habit("rarely there", (0.05,) * 5 + (0.09, 0.09), (9, 21), (9, 21), 1.2, 20, 2_500, 0.1),
    Habit("big downloader", (0.8,) * 7, (17, 25), (11, 26), 2, 120, 45_000, 0.03),
    Habit("sends pictures", (0.25,) * 5 + (0.4, 0.7), (18, 22), (10, 22), 1.5, 30, 1_500, 7),
    Habit("plays games", (0.8,) * 7, (18, 24), (13, 25), 2, 90, 5_000, 0.7),
    Habit("early bird", (0.85,) * 7, (5, 8), (6, 10), 1.5, 12, 3_500, 0.09),
    Habit("weekend guest", (0, 0, 0, 0, 0.5, 0.8, 0.7), (16, 23), (9, 24), 3, 40, 8_000, 0.15),
    Habit("off and on", (0.85,) * 7, (7, 23), (8, 24), 7, 6, 3_000, 0.11),
)

# Month and day from which they begin, within so many days; shortest and longest duration.
HOLIDAYS = ((2, 10, 14, 5, 9), (6, 25, 30, 12, 24), (12, 21, 4, 3, 8))


def names_of(count):
    """So many different names of users."""
    names = len(FIRST_NAMES)
    return [
        FIRST_NAMES[i % names] + (f" {i // names + 1}" if i >= names else "") for i in range(count)
    ]


def holidays(seed, first, last):
    away = set()
    for year in range(first.year - 1, last.year + 1):
        chance = Random(f"{seed} {year}")
        for month, day, latest, shortest, longest in HOLIDAYS:
            begin = date(year, month, day) + timedelta(chance.randrange(latest))
            away.update(begin + timedelta(n) for n in range(chance.randint(shortest, longest)))
    return away


class Person:
    """One user, whose chances are those of the name and the seed."""

    def __init__(self, name, habit, seed):
        self.name = name
        self.habit = habit
        self.chance = Random(f"{seed} {name}")
        self.shift = self.chance.uniform(-1, 1) * HOUR
        self.zeal = self.chance.uniform(0.7, 1.3)

    def wishes(self, days, away):
        """How many sessions there would be on each day, as fractions too."""
        for number, day in enumerate(days):
            is_there = self.chance.random() < self.habit.days[day.weekday()]
            wish = self.habit.sessions * self.zeal * self.chance.uniform(0.4, 1.6)
            yield wish * SESSION_GROWTH ** (number / 365) if is_there and day not in away else 0

    def starts(self, days, counts):
        """Seconds since the first day began, in order."""
        earliest = 0
        for number, (day, count) in enumerate(zip(days, counts)):
            begin, end = self.habit.weekend if day.weekday() >= 5 else self.habit.work
            drawn = [self.chance.triangular(begin, end) * HOUR + self.shift for _ in range(count)]
            for second in sorted(each % DAY for each in drawn):
                start = max(number * DAY + int(second), earliest)
                earliest = start + CLOSEST_STARTS
                yield start

    def sessions(self, days, counts):
        """(start, user, seconds, bytes sent, bytes received) of each, in order."""
        starts = list(self.starts(days, counts))
        if starts and starts[-1] >= len(days) * DAY:
            raise ValueError(f"the days are too short for so many sessions of {self.name}")
        for start, following in zip(starts, [*starts[1:], math.inf]):
            wanted = SHORTEST_SESSION + self.about(self.habit.minutes * 60, 0.8)
            seconds = int(min(wanted, following - start - PAUSE))
            growth = SPEED_GROWTH ** (start / DAY / 365)
            received = seconds * growth * self.about(self.habit.speed, 0.6)
            sent = received * self.about(self.habit.upload, 0.4)
            yield start, self.name, seconds, int(sent), int(received)

    def about(self, median, spread):
        return median * math.exp(self.chance.gauss(0, spread))


def shared_out(total, wishes):
    """Whole numbers in the proportion of the wishes, with that total."""
    wished = sum(wishes)
    given = reached = 0
    for wish in wishes:
        reached += wish
        share = round(reached * total / wished) - given if wished else 0
        given += share
        yield share


def sessions(names, first, last, seed=1, rows=None, with_holidays=True):
    """Rows for the table ConnLog, as texts in the order of its columns, by start.

    The sessions start from the first day to the last, both included, and those of one user do not
    overlap. The same arguments make the same sessions. Users get their habits in the order of their
    names. With `rows` there are exactly so many; ValueError when the days cannot hold them.
    """
    days = [first + timedelta(n) for n in range((last - first).days + 1)]
    away = holidays(seed, first, last) if with_holidays else set()
    people = [Person(name, HABITS[n % len(HABITS)], seed) for n, name in enumerate(names)]
    wishes = [wish for person in people for wish in person.wishes(days, away)]
    if rows and not any(wishes):
        raise ValueError("nobody is there on these days")
    counts = list(shared_out(round(sum(wishes)) if rows is None else rows, wishes))
    logs = [
        person.sessions(days, counts[n * len(days) : (n + 1) * len(days)])
        for n, person in enumerate(people)
    ]
    for start, user, seconds, sent, received in heapq.merge(*logs):
        minutes, second = divmod(start % DAY, 60)
        time = f"{days[start // DAY]} {minutes // 60:02}:{minutes % 60:02}:{second:02}"
        yield user, str(seconds), str(sent), str(received), time
