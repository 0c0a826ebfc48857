"""Writes phases.csv and activities.csv beside this script; needs mpmath.

The volume is a root of the cubic for the exact parameters of the composition; ln phi and the
partial molar volumes come from numerical derivatives of the Helmholtz energy in 60 digits, not
from the closed formulas of the model.
"""

import random
from pathlib import Path

from mpmath import diff, exp, log, mp, mpf, polyroots, sqrt

from gases import ALL_ELEVEN, Mixture, R, counts_of, pure, write

FOLDER = Path(__file__).parent
PHASES_HEAD = """\
# Phases of mixtures in 60 digits, by make_phases.py. Zeros for components that are not present.
# eleven counts of 1e-12,T,P,number of the root,V,quotient of step 1e-4,eleven ln(phi),eleven dV/dn
"""
ACTIVITIES_HEAD = """\
# Activities against the pure real gases at T and the reference pressure, their volumes taken at T
# and P, in 60 digits, by make_phases.py.
# eleven counts of 1e-12,T,P,number of the root,reference P,eleven pure volumes,eleven activities
"""
MIXTURES = [
    counts_of(H2O=0.7, H2=0.3), counts_of(H2O=0.85, CO2=0.15), counts_of(CO2=1e-12, CH4=1 - 1e-12),
    counts_of(CO2=0.2, CH4=0.45, N2=0.35), counts_of(H2O=0.4, CO2=0.3, CH4=0.2, H2S=0.1), ALL_ELEVEN]


def residual_energy(mixture, amounts, t, volume):
    """A_res/(R*T) of amounts n_i in the volume."""
    total = sum(amounts)
    b = sum(n * bi for n, bi in zip(amounts, mixture.b_pure))
    root = sum(n * sqrt(ai) for n, ai in zip(amounts, mixture.a_pure))
    return -total * log((volume - b) / volume) - root**2 / (R * t * volume)


def pressure(mixture, amounts, t, volume):
    total = sum(amounts)
    b = sum(n * bi for n, bi in zip(amounts, mixture.b_pure))
    root = sum(n * sqrt(ai) for n, ai in zip(amounts, mixture.a_pure))
    return R * t * total / (volume - b) - (root / volume) ** 2


def by_amount(function, mixture, i, volume, t):
    def of_amount(n):
        amounts = list(mixture.x)
        amounts[i] = n
        return function(mixture, amounts, t, volume)

    return diff(of_amount, mixture.x[i])


def spread(mixture, values):
    table = dict(zip(mixture.present, values))
    return [table.get(i, mpf(0)) for i in range(11)]


def volumes(mixture, t, p):
    """The real volumes, by the number of the root."""
    unit = (mixture.a * mixture.b / p) ** (mpf(1) / 3)
    found = polyroots([1, -(R * t / p + mixture.b) / unit, mixture.a / p / unit**2, -1],
                      maxsteps=500, extraprec=500)
    real = sorted(v.real * unit for v in found if abs(v.imag) < mpf(10) ** -40)
    return {0: real[0]} if len(real) == 1 else {1: real[0], 0: real[1], 2: real[2]}


def phase_row(mixture, temperature, pressure_value, number):
    t, p = mpf(temperature), mpf(pressure_value)
    v = volumes(mixture, t, p).get(number)
    if v is None:
        return None
    n = len(mixture.x)
    z = p * v / (R * t)
    log_phi = [by_amount(residual_energy, mixture, i, v, t) - log(z) for i in range(n)]
    by_volume = diff(lambda w: pressure(mixture, mixture.x, t, w), v)
    partial = [-by_amount(pressure, mixture, i, v, t) / by_volume for i in range(n)]
    h = mpf(0.0001)
    ends = [pressure(mixture, mixture.x, t, v + s * h) for s in (-1, 1)]
    return [*mixture.counts, temperature, pressure_value, number, v, (ends[1] - ends[0]) / (2 * h),
            *spread(mixture, log_phi), *spread(mixture, partial)]


def phase_rows():
    rng = random.Random(51)
    mixtures = [Mixture(pure(i)) for i in range(11)] + [Mixture(c) for c in MIXTURES]
    for mixture in mixtures:
        a, b = float(mixture.a), float(mixture.b)
        tc, pc = 8 * a / (27 * b * float(R)), a / (27 * b * b)
        # Three volumes, a dilute gas, dense states, and ln phi on both sides of 227.
        states = [(rng.uniform(0.4, 0.9), 10 ** rng.uniform(-3, -1)), (1.2, 1e-9),
                  (rng.uniform(1.1, 4), 10 ** rng.uniform(-2, 2)), (0.5, 3e3), (0.5, 5e3)]
        for t, p in states:
            for number in (1, 0, 2):
                row = phase_row(mixture, t * tc, p * pc, number)
                if row:
                    yield row


def activity_rows():
    rng = random.Random(52)
    for counts in [pure(9), *MIXTURES]:
        mixture = Mixture(counts)
        for temperature, pressure_value in ((280.0, 0.05), (450.0, 60.0), (700.0, 300.0)):
            reference = rng.choice([pressure_value, rng.uniform(0.05, 200)])
            t, p = mpf(temperature), mpf(pressure_value)
            found = volumes(mixture, t, p)
            number = max(found)
            v = found[number]
            pure_volumes, activities = [], []
            for k, i in enumerate(mixture.present):
                gas = Mixture(pure(i))
                alone = max(volumes(gas, t, p).values())
                log_f = by_amount(residual_energy, mixture, k, v, t) + log(mixture.x[k] * R * t / v)
                log_standard = by_amount(residual_energy, gas, 0, alone, t)
                z = mpf(reference) * alone / (R * t)
                pure_volumes.append(alone)
                activities.append(exp(log_f - log_standard + log(z)) / mpf(reference))
            yield [*counts, temperature, pressure_value, number, reference,
                   *spread(mixture, pure_volumes), *spread(mixture, activities)]


write(FOLDER / "phases.csv", PHASES_HEAD, phase_rows())
write(FOLDER / "activities.csv", ACTIVITIES_HEAD, activity_rows())
