"""Writes two_phases.csv beside this script: the properties of mixtures in two phases, in 60 digits;
needs mpmath. The scripts of the phases and of the properties write their own files anew with it.

The whole has the sum of what its phases have; their properties are numerical derivatives of the
Helmholtz energy.
"""

from pathlib import Path

from mpmath import diff, mpf

import make_phase_equilibria as equilibria
import make_properties as properties
from gases import Mixture, write

FOLDER = Path(__file__).parent
HEAD = """\
# Properties of mixtures in two phases in 60 digits, by make_two_phases.py. Each line belongs to the
# line of that number, from 0, of phase_equilibria.csv: the bulk has the given share of phase Y.
# line,share,V,U,H,S,A,G of phase X, the same of phase Y, the same of the whole
"""
LINES = (0, 3, 4, 6, 9, 13)
SHARE = 0.3


def of_phase(mixture, t, p, v, x):
    def of_tv(tt, vv):
        return properties.helmholtz(mixture, tt, vv, x)

    a = of_tv(t, v)
    s = -diff(of_tv, (t, v), (1, 0))
    return [v, a + t * s, a + t * s + p * v, s, a, a + p * v]


def rows():
    for line in LINES:
        counts, kind, temperature, vx, vy, other = equilibria.STATES[line]
        found = equilibria.incipient(counts, kind, temperature, vx, vy, other)
        mixture = Mixture(counts)
        t, p = mpf(temperature), found[13]
        there = [found[16 + i] for i in mixture.present]
        pair = [mixture.x, there] if kind == equilibria.BUBBLE else [there, mixture.x]
        x, y = (of_phase(mixture, t, p, v, z) for v, z in zip(found[14:16], pair))
        whole = [(1 - mpf(SHARE)) * a + mpf(SHARE) * b for a, b in zip(x, y)]
        yield [line, SHARE, *x, *y, *whole]


write(FOLDER / "two_phases.csv", HEAD, rows())
