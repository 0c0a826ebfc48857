"""Writes volumes.csv beside this script: what the molar-volume screen has to show; needs mpmath.

The temperature that is calculated with is the typed one with three decimals. Partial volumes are
numerical derivatives of the pressure in 60 digits, not the closed formula of the model.
"""

from pathlib import Path

from mpmath import diff, log, mpf, polyroots, sqrt

from gases import ALL_ELEVEN, Mixture, R, counts_of, pure, write

HEAD = """\
# What belongs to each real root at the typed states, in 60 digits, by make_volumes.py. A flag is 1
# where a pure gas has three volumes; it takes the one of the same rank where the mixture has three
# too, else the one of the lowest fugacity.
# eleven counts of 1e-12,1 for Celsius,T,P,real and imaginary part of the roots 0 to 2,number of the
# root,quotient of step 1e-4,density,ideal volume,excess volume,eleven pure volumes,eleven partial
# volumes,eleven flags
"""
STATES = [
    (counts_of(CO2=0.7, CH4=0.3), 0, "220", "3"),
    (ALL_ELEVEN, 1, "25.00049", "5"),
    (counts_of(H2O=0.9, CO2=0.1), 1, "349.99951", "10"),
    (counts_of(H2O=0.5, H2=0.5), 0, "500.1234", "0.001"),
    (counts_of(N2=1), 0, "100.0001", "0.5"),
    (counts_of(CH4=0.5, N2=0.5), 1, "-123.4567", "300"),
    (counts_of(CO2=1 - 1e-12, H2=1e-12), 0, "270", "3"),
    (counts_of(CO2=0.6, H2=0.4), 0, "240", "2"),
    (counts_of(CO2=0.6, H2=0.4), 0, "240", "3"),
]


def roots(mixture, t, p):
    """Roots 0, 1, 2; the signs of the imaginary parts follow the branch, p > 0, s > 1 or s < -1."""
    a2, a1, a0 = -(R * t / p + mixture.b), mixture.a / p, -mixture.a * mixture.b / p
    found = sorted(polyroots([1, a2, a1, a0], maxsteps=500, extraprec=500),
                   key=lambda v: abs(v.imag))
    if abs(found[2].imag) < mpf(10) ** -40:
        low, middle, high = sorted(v.real for v in found)
        return [middle, mpf(0), low, mpf(0), high, mpf(0)]
    dp = a1 - a2**2 / 3
    dq = 2 * a2**3 / 27 - a1 * a2 / 3 + a0
    real, imaginary = found[1].real, abs(found[1].imag)
    imaginary *= 1 if dp > 0 or dq < 0 else -1
    return [found[0].real, mpf(0), real, -imaginary, real, imaginary]


def real_roots(mixture, t, p):
    table = roots(mixture, t, p)
    return {i: table[2 * i] for i in range(3) if table[2 * i + 1] == 0}


def pressure(mixture, amounts, t, volume):
    total = sum(amounts)
    b = sum(n * bi for n, bi in zip(amounts, mixture.b_pure))
    root = sum(n * sqrt(ai) for n, ai in zip(amounts, mixture.a_pure))
    return R * t * total / (volume - b) - (root / volume) ** 2


def partial_volume(mixture, i, t, v):
    def of_amount(n):
        amounts = list(mixture.x)
        amounts[i] = n
        return pressure(mixture, amounts, t, v)

    by_volume = diff(lambda w: pressure(mixture, mixture.x, t, w), v)
    return -diff(of_amount, mixture.x[i]) / by_volume


def pure_volume(i, volumes, rank, t, p):
    if len(volumes) == 1 or rank is not None:
        return volumes[rank or 0]
    gas = Mixture(pure(i))
    return min((volumes[1], volumes[2]),
               key=lambda v: gas.b / (v - gas.b) - 2 * gas.a / (R * t * v) - log(v - gas.b))


def spread(mixture, values):
    table = dict(zip(mixture.present, values))
    return [table.get(i, mpf(0)) for i in range(11)]


def rows():
    for counts, celsius, temperature, pressure_text in STATES:
        mixture = Mixture(counts)
        t = mpf(f"{float(temperature):.3f}") + (mpf("273.15") if celsius else 0)
        p = mpf(float(pressure_text))
        gases = [list(real_roots(Mixture(pure(i)), t, p).values()) for i in mixture.present]
        mixed = real_roots(mixture, t, p)
        for number, v in mixed.items():
            rank = number if len(mixed) == 3 else None
            alone = [pure_volume(i, volumes, rank if len(volumes) == 3 else None, t, p)
                     for i, volumes in zip(mixture.present, gases)]
            ideal = sum(x * v for x, v in zip(mixture.x, alone))
            h = mpf(0.0001)
            ends = [pressure(mixture, mixture.x, t, v + s * h) for s in (-1, 1)]
            partial = [partial_volume(mixture, i, t, v) for i in range(len(alone))]
            flags = [len(volumes) // 2 for volumes in gases]
            yield [*counts, celsius, float(temperature), float(pressure_text),
                   *roots(mixture, t, p), number, (ends[1] - ends[0]) / (2 * h),
                   mixture.molar_mass / v, ideal, v - ideal, *spread(mixture, alone),
                   *spread(mixture, partial), *spread(mixture, flags)]


write(Path(__file__).parent / "volumes.csv", HEAD, rows())
