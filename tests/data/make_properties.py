"""Writes properties.csv beside this script: thermodynamic properties in 60 digits, all of them by
numerical differentiation of the Helmholtz energy A(T, V, n), none by a closed form; needs mpmath.
The polynomials of the ideal gases are read from the program's own table."""

import random
import re
from pathlib import Path

from mpmath import diff, log, mp, mpf

from gases import ALL_ELEVEN, Mixture, R, counts_of, write

mp.dps = 60
FOLDER = Path(__file__).parent
P0 = mpf(0.1)
DATA_R = mpf(8.31451)
HEAD = """\
# Properties by differentiation of the Helmholtz energy in 60 digits, by make_properties.py.
# eleven counts of 1e-12,T,P,V,U,H,S,A,G,Cv,Cp,compressibility,expansion,square of the speed of
# sound,Joule-Thomson coefficient; eleven chemical potentials,partial molar enthalpies,entropies and
# volumes
"""
STATES = [
    (counts_of(CO2=1), 298.15, 100),
    (counts_of(CO2=0.7, CH4=0.3), 220, 65),
    (counts_of(CO2=0.7, CH4=0.3), 220, 150),  # unstable
    (counts_of(CO2=0.7, CH4=0.3), 220, 600),
    (counts_of(CO2=0.75, CH4=0.25), 225, 85),  # negative pressure
    (counts_of(H2O=1), 990, 2e9),
    (counts_of(H2O=0.9, CO2=0.1), 700, 45),
    (counts_of(N2=0.999999999999, Ar=1e-12), 120, 3000),
    (counts_of(H2=0.5, C2H6=0.5), 45, 600),  # no speed of sound
    (ALL_ELEVEN, 1200, 120),
    (ALL_ELEVEN, 5, 1e6),
    (counts_of(NH3=0.4, CO=0.3, O2=0.3), 6500, 300),
    (counts_of(CO2=0.75, CH4=0.25), 220, 244.532871),  # dP/dV almost 0
    (counts_of(N2=1), 300, 94.946368),  # the Joule-Thomson coefficient almost 0
]


def random_states(count):
    random.seed(8)
    for _ in range(count):
        counts = [0] * 11
        gases = random.sample(range(11), random.randint(1, 11))
        for gas in gases:
            counts[gas] = random.randrange(1, 10**12 // len(gases))
        counts[gases[0]] += 10**12 - sum(counts)
        t = round(10 ** random.uniform(1.9, 3.5), 3)
        yield counts, t, round(float(Mixture(counts).b) * (1 + 10 ** random.uniform(-1, 4)), 3)


def table():
    source = (FOLDER.parent.parent / "model" / "ideal_gas.cpp").read_text()
    gases = re.split(r"\n    // \w+\n", source.split("Rows = {{")[1].split("\n}};")[0])[1:]
    number = r"-?\d+\.?\d*(?:e[-+]?\d+)?"
    result = []
    for gas in gases:
        numbers = [mpf(float(n)) for n in re.findall(number, gas)]
        result.append([numbers[i : i + 10] for i in range(0, len(numbers), 10)])
    return result


TABLE = table()


def potential(gas, t):
    """H - T·S of the ideal gas at the standard pressure, and beyond the range by constant Cp."""
    rows = TABLE[gas]
    inside = min(max(t, mpf(10)), rows[-1][0])
    c = next(row for row in rows if inside <= row[0])
    x = inside
    h = -c[1] / x + c[2] * log(x) + c[8] + sum(c[3 + k] * x ** (k + 1) / (k + 1) for k in range(5))
    s = -c[1] / (2 * x**2) - c[2] / x + c[3] * log(x) + c[9]
    s += sum(c[3 + k] * x**k / k for k in range(1, 5))
    cp = c[1] / x**2 + c[2] / x + sum(c[3 + k] * x**k for k in range(5))
    h += cp * (t - inside)
    s += cp * log(t / inside)
    return DATA_R * (h - t * s)


def helmholtz(m, t, v, n):
    free = v - sum(k * b for k, b in zip(n, m.b_pure))
    a = sum(k * l * m.a_pair[i][j] for i, k in enumerate(n) for j, l in enumerate(n))
    return sum(
        k * (potential(gas, t) + R * t * (log(k * R * t / (P0 * free)) - 1))
        for k, gas in zip(n, m.present)
    ) - a / v


def row_of(counts, t, v):
    m = Mixture(counts)
    t, v = mpf(t), mpf(v)

    def of_tv(tt, vv):
        return helmholtz(m, tt, vv, m.x)

    a, s = of_tv(t, v), -diff(of_tv, (t, v), (1, 0))
    p = -diff(of_tv, (t, v), (0, 1))
    cv = -t * diff(of_tv, (t, v), (2, 0))
    p_t, p_v = -diff(of_tv, (t, v), (1, 1)), -diff(of_tv, (t, v), (0, 2))
    u = a + t * s
    cp = cv - t * p_t**2 / p_v
    alpha = -p_t / p_v / v
    sound = -(v**2) * cp / cv * p_v / (m.molar_mass / 1000)
    jt = v * (t * alpha - 1) / cp
    row = [*counts, t, p, v, u, u + p * v, s, a, a + p * v, cv, cp, -1 / v / p_v, alpha, sound, jt]
    parts = [[mpf(0)] * 11 for _ in range(4)]
    for k, gas in enumerate(m.present):

        def with_n(tt, vv, nk):
            return helmholtz(m, tt, vv, [*m.x[:k], nk, *m.x[k + 1 :]])

        at = (t, v, m.x[k])
        mu = diff(with_n, at, (0, 0, 1))
        pressure_n = -diff(with_n, at, (0, 1, 1))
        entropy = -diff(with_n, at, (1, 0, 1)) - pressure_n * p_t / p_v
        for part, value in zip(parts, (mu, mu + t * entropy, entropy, -pressure_n / p_v)):
            part[gas] = value
    return row + [value for part in parts for value in part]


write(FOLDER / "properties.csv", HEAD, (row_of(*state) for state in [*STATES, *random_states(20)]))
