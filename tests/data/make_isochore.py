"""Writes isochore.txt and isotherm.txt beside this script, with which the files that the screens
export are compared: carbon dioxide with 30 % methane at 1 dm3/mol and at 220 K, each number the double
nearest to the value in 60 digits, in its shortest form; needs mpmath. The states are some at which
the rounding of the difference of two terms does not show."""

from pathlib import Path

from mpmath import mpf

from gases import Mixture, R, counts_of

FOLDER = Path(__file__).parent
MIXTURE = Mixture(counts_of(CO2=0.7, CH4=0.3))


def shortest(value):
    return repr(float(value)).removesuffix(".0")


def pressure(kelvin, volume):
    return R * kelvin / (volume - MIXTURE.b) - MIXTURE.a / volume**2


def density(volume):
    return shortest(MIXTURE.molar_mass / volume)


def isochore(volume):
    yield f"Molar Volume = {volume} cm3/mol"
    yield f"Density = {density(volume)} g/cm3"
    yield "Temperature, Pressure"
    yield "(Celsius), (MPa)"
    for celsius in ["-50", "-19.5", "11", "41.5", "45"]:
        kelvin = mpf(celsius) + mpf("273.15")
        yield f"{celsius}, {shortest(pressure(kelvin, volume))}"


def isotherm(kelvin):
    yield f"Temperature = {shortest(mpf(kelvin) - mpf('273.15'))} Celsius"
    yield "Molar Volume, Density, Pressure"
    yield "(cm3/mol), (g/cm3), (MPa)"
    for volume in [900, 700, 500]:
        yield f"{volume}, {density(volume)}, {shortest(pressure(kelvin, volume))}"


(FOLDER / "isochore.txt").write_text("\n".join(isochore(1000)) + "\n")
(FOLDER / "isotherm.txt").write_text("\n".join(isotherm(220)) + "\n")
