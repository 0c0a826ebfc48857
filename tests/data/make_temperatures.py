"""Writes temperatures.csv beside this script: what the temperature screen has to show; needs mpmath.
"""

from pathlib import Path

from mpmath import mpf

from gases import ALL_ELEVEN, Mixture, R, counts_of, write

HEAD = """\
# States as they are typed and their temperature in the unit asked for, in 60 digits, by
# make_temperatures.py.
# eleven counts of 1e-12,1 for Celsius,1 for a density,P,V or density,T
"""
STATES = [
    (counts_of(CO2=1), 0, 0, "9.6", "80"),
    (counts_of(CO2=1), 1, 0, "0", "80"),
    (counts_of(CO2=1), 0, 1, "-20", "0.7"),
    (counts_of(CO2=0.7, CH4=0.3), 1, 0, "16.5", "80"),
    (counts_of(H2O=0.9, CO2=0.1), 1, 1, "1e-6", "1e-8"),
    (ALL_ELEVEN, 0, 0, "2500", "38.25"),
    (ALL_ELEVEN, 1, 1, "0.101325", "0.0012"),
]


def rows():
    for counts, celsius, density, pressure, number in STATES:
        mixture = Mixture(counts)
        p = mpf(float(pressure))
        v = mixture.molar_mass / mpf(float(number)) if density else mpf(float(number))
        t = (p + mixture.a / v**2) * (v - mixture.b) / R
        yield [*counts, celsius, density, float(pressure), float(number),
               t - mpf("273.15") if celsius else t]


write(Path(__file__).parent / "temperatures.csv", HEAD, rows())
