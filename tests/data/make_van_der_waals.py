"""Writes components.csv and van_der_waals.csv beside this script; needs mpmath."""

import random
from pathlib import Path

from mpmath import mpf

from gases import ALL_ELEVEN, GASES, Mixture, R, counts_of, pure, write

FOLDER = Path(__file__).parent
COMPONENTS_HEAD = """\
# Component tables in 60 digits, by make_van_der_waals.py.
# M,Ttriple,Tc,Pc,Vc,omega,Zc,a,b
"""
STATES_HEAD = """\
# Mixture parameters, molar mass, molar volume and pressure in 60 digits, by make_van_der_waals.py.
# eleven counts of 1e-12,T,V,rho,a_mix,b_mix,M_mix,V of rho,P,larger term of P
"""


def component_rows():
    for i, gas in enumerate(GASES):
        mixture = Mixture(pure(i))
        zc = mpf(0.2905) - mpf(0.085) * mpf(gas[6])
        yield [*map(float, gas[1:7]), zc, mixture.a, mixture.b]


def state_rows():
    rng = random.Random(18730614)
    compositions = [pure(i) for i in range(11)]
    for i in range(11):
        for j in range(i):
            count = rng.randrange(1, 10**12)
            compositions.append([{i: count, j: 10**12 - count}.get(k, 0) for k in range(11)])
    compositions += [ALL_ELEVEN, counts_of(H2O=1e-12, C2H6=1 - 1e-12)]
    cuts = [sorted(rng.sample(range(1, 10**12), 10)) for _ in range(8)]
    compositions += [[hi - lo for lo, hi in zip([0, *cut], [*cut, 10**12])] for cut in cuts]
    for counts in compositions:
        mixture = Mixture(counts)
        temperature = rng.uniform(50, 2000)
        volume = float(mixture.b) * (0.3 + 10 ** rng.uniform(-2, 4))
        density = 10 ** rng.uniform(-6, 0.5)
        t, v = mpf(temperature), mpf(volume)
        # P belongs to the parameters as doubles: near b it hangs on every bit of them.
        terms = R * t / (v - mpf(float(mixture.b))), mpf(float(mixture.a)) / v**2
        yield [*counts, temperature, volume, density, mixture.a, mixture.b, mixture.molar_mass,
               mixture.molar_mass / mpf(density), terms[0] - terms[1], max(map(abs, terms))]


write(FOLDER / "components.csv", COMPONENTS_HEAD, component_rows())
write(FOLDER / "van_der_waals.csv", STATES_HEAD, state_rows())
