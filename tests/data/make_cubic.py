"""Writes volume_roots.csv beside this script; needs mpmath.

Each row: a, b, T, P as doubles, then real and imaginary part of the roots 0, 1, 2 of
V^3 - (R*T/P + b)*V^2 + (a/P)*V - a*b/P in 60 digits, in the order of the trigonometric form.
Six zeros where p*q, computed in doubles, is exactly 0.
"""

import random
from pathlib import Path

from mpmath import mp, mpf, polyroots, sqrt

from gases import ALL_ELEVEN, GASES, Mixture, R, counts_of, pure, write

HEAD = """\
# Molar volumes by arbitrary-precision roots of the cubic, by make_cubic.py.
# a,b,T,P,real 0,imaginary 0,real 1,imaginary 1,real 2,imaginary 2
"""
MIXTURES = [counts_of(H2O=0.7, H2=0.3), counts_of(H2O=0.85, CO2=0.15),
            counts_of(CO2=0.2, CH4=0.45, N2=0.35), ALL_ELEVEN]

# States at which powers of the volume have no room in a double.
FAR = [(1e20, 1e160), (1e303, 1e306), (1e308, 1e300), (1e100, 1e-100), (1e200, 1e-100),
       (1e-120, 1e-303), (5e-306, 1e-250)]


def pq_is_zero(a, b, t, p):
    """The rule in doubles, operation by operation."""
    a2, a1, a0 = (-float(R) * t - p * b) / p, a / p, -a * b / p
    depressed_p = (3.0 * a1 - a2 * a2) / 3.0
    depressed_q = (((a2 * (a2 * (2.0 * a2))) - a1 * (9.0 * a2)) + 27.0 * a0) / 27.0
    return depressed_p * depressed_q == 0.0


def roots(a, b, t, p, digits=60):
    """Roots 0, 1, 2; the signs of the imaginary parts follow the branch, p > 0, s > 1 or s < -1."""
    if pq_is_zero(a, b, t, p):
        return [mpf(0)] * 6
    mp.dps = digits
    a, b, t, p = map(mpf, (a, b, t, p))
    a2, a1, a0 = -(R * t / p + b), a / p, -a * b / p
    # In units of the geometric mean, so that tiny roots beside huge ones are found.
    unit = abs(a * b / p) ** (mpf(1) / 3)
    mp.dps = 2 * digits
    found = polyroots([1, a2 / unit, a1 / unit**2, a0 / unit**3], maxsteps=3000, extraprec=3000)
    values = [root * unit for root in found]
    mp.dps = digits
    dp = a1 - a2**2 / 3
    dq = 2 * a2**3 / 27 - a1 * a2 / 3 + a0
    if 4 * dp**3 + 27 * dq**2 <= 0:
        low, middle, high = sorted(v.real for v in values)
        return [middle, mpf(0), low, mpf(0), high, mpf(0)]
    values.sort(key=lambda v: abs(v.imag))
    real, pair = values[0].real, values[1]
    imaginary = abs(pair.imag) if dp > 0 or dq < 0 else -abs(pair.imag)
    return [real, mpf(0), pair.real, -imaginary, pair.real, imaginary]


def reduced_states(rng):
    """T and P in units of 8a/(27bR) and a/(27b^2)."""
    for exponent in range(-12, 5, 2):
        for t in (0.05, 0.3, 0.6, 0.9, 1.5, 5.0):
            yield t, (10.0**exponent, True)
    for _ in range(10):
        yield rng.uniform(0.05, 5), (10 ** rng.uniform(-12, 4), True)
    for t, p in ((0.5, -1e-6), (0.7, -0.1), (0.5, -3.0), (1.5, -0.5)):
        yield t, (p, False)
    for exponent in range(-15, 0, 2):
        offset = 10.0**exponent
        yield 1 + offset * rng.uniform(-1, 1), (1 + offset * rng.uniform(-1, 1), False)


def near_double_root(rng, a, b):
    """s = 1 and s = -1: on either side of a spinodal point, also of the critical point."""
    for exponent in range(-14, -1, 2):
        y = rng.choice([rng.uniform(0.01, 0.33), 1 / 3, rng.uniform(0.34, 0.49)])
        v = b / y
        t = 2 * a * (v - b) ** 2 / (float(R) * v**3)
        p = float(R) * t / (v - b) - a / v**2
        for sign in (-1, 1):
            yield t, p * (1 + sign * 10.0**exponent)


def near_p_zero(rng, a, b):
    for exponent in range(-12, 0, 3):
        p = rng.uniform(0.1, 50) * a / (27 * b * b)
        t = float((sqrt(3 * mpf(a) * p) - mpf(p) * b) / R)
        if t > 0:
            for sign in (-1, 1):
                yield t * (1 + sign * 10.0**exponent), p


def rows():
    rng = random.Random(33)
    mixtures = [Mixture(pure(i)) for i in range(11)] + [Mixture(c) for c in MIXTURES]
    for i, mixture in enumerate(mixtures):
        a, b = float(mixture.a), float(mixture.b)
        tc, pc = 8 * a / (27 * b * float(R)), a / (27 * b * b)
        states = [(t * tc, p if absolute else p * pc)
                  for t, (p, absolute) in reduced_states(rng)]
        # Every gas gets a part of the grid, the mixtures all of it.
        states = states[i % 5 :: 5] if i < 11 else states
        states += near_double_root(rng, a, b)
        states += near_p_zero(rng, a, b)
        if i < 11:
            # Here the parameters of the model, as it computes them.
            a = 29.164406331987003 * GASES[i][3] * GASES[i][3] / GASES[i][4]
            b = 1.039309 * GASES[i][3] / GASES[i][4]
            states.append((GASES[i][3], GASES[i][4]))
        for t, p in states:
            yield [a, b, t, p, *roots(a, b, t, p)]
    for t, p in FAR:
        yield [a, b, t, p, *roots(a, b, t, p, 1000)]


write(Path(__file__).parent / "volume_roots.csv", HEAD, rows())
