"""Writes pressures.csv beside this script: what the pressure screen has to show; needs mpmath."""

from pathlib import Path

from mpmath import mpf

from gases import ALL_ELEVEN, Mixture, R, counts_of, write

HEAD = """\
# States as they are typed, their pressure in MPa and M_mix/V in 60 digits, by make_pressures.py.
# eleven counts of 1e-12,1 for Celsius,1 for a density,T,V or density,P,echo
"""
STATES = [
    (counts_of(CO2=1), 0, 0, "298.15", "80"),
    (counts_of(CO2=0.7, CH4=0.3), 0, 0, "298.15", "80"),
    (counts_of(H2O=0.9, CO2=0.1), 1, 0, "350", "60.5"),
    (ALL_ELEVEN, 1, 0, "-40", "500"),
    (counts_of(N2=1), 1, 1, "-273.1", "0.2"),
    (counts_of(H2=0.5, Ar=0.5), 0, 1, "150", "0.0015"),
    (counts_of(H2O=1), 0, 0, "700", "20"),  # below b
    (counts_of(C2H6=1), 0, 0, "1000000", "1000000000"),
]


def rows():
    for counts, celsius, density, temperature, number in STATES:
        mixture = Mixture(counts)
        t = mpf(temperature) + (mpf("273.15") if celsius else 0)
        v = mixture.molar_mass / mpf(number) if density else mpf(number)
        p = R * t / (v - mixture.b) - mixture.a / v**2
        yield [*counts, celsius, density, float(temperature), float(number), p,
               mixture.molar_mass / mpf(number)]


write(Path(__file__).parent / "pressures.csv", HEAD, rows())
