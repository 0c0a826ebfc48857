"""The gases and the mixing rules in high precision, from the published constants."""

from mpmath import mp, mpf, sqrt

mp.dps = 60

R = mpf(8.314472)

# formula, M, Ttriple, Tc, Pc, Vc, omega, in internal order
GASES = [
    ("H2O", 18.01528, 273.16, 647.096, 22.064, 56.0, 0.344),
    ("CO2", 44.0098, 216.592, 304.128, 7.3773, 94.118905, 0.225),
    ("N2", 28.01348, 63.148, 126.193, 3.3978, 89.46944618, 0.04),
    ("H2S", 34.08188, 187.6, 373.539, 8.94, 97.6998, 0.1),
    ("NH3", 17.03056, 195.4, 405.6, 11.28, 72.5, 0.25),
    ("H2", 2.01588, 13.8, 32.98, 1.293, 65.029, -0.22),
    ("O2", 31.9988, 54.361, 154.581, 5.043, 73.36757153, 0.021),
    ("CO", 28.0104, 68.127, 132.85, 3.4935, 92.16589862, 0.049),
    ("Ar", 39.9484, 83.3, 150.87, 4.898, 74.29496, 0.0),
    ("CH4", 16.04276, 90.6941, 190.564, 4.5922, 98.628, 0.008),
    ("C2H6", 30.06964, 90.352, 305.33, 4.8718, 145.5604076, 0.098),
]


class Mixture:
    """Parameters of the composition given by eleven counts of 10^-12, at the compact positions."""

    def __init__(self, counts):
        self.counts = counts
        self.present = [i for i, count in enumerate(counts) if count > 0]
        self.x = [mpf(counts[i] / 10**12) for i in self.present]
        tc = [mpf(GASES[i][3]) for i in self.present]
        pc = [mpf(GASES[i][4]) for i in self.present]
        self.molar_mass = sum(x * mpf(GASES[i][1]) for x, i in zip(self.x, self.present))
        self.a_pure = [mpf(29.164406331987003) * t * t / p for t, p in zip(tc, pc)]
        self.b_pure = [mpf(1.039309) * t / p for t, p in zip(tc, pc)]
        self.a_pair = [[sqrt(k * l) for l in self.a_pure] for k in self.a_pure]
        self.a = sum(
            xk * xl * self.a_pair[k][l]
            for k, xk in enumerate(self.x)
            for l, xl in enumerate(self.x)
        )
        self.b = sum(x * b for x, b in zip(self.x, self.b_pure))


def pure(i):
    return [10**12 if k == i else 0 for k in range(len(GASES))]


def counts_of(**parts):
    """Counts from fractions by formula, for example counts_of(H2O=0.7, H2=0.3)."""
    counts = [round(parts.get(gas[0], 0) * 10**12) for gas in GASES]
    assert sum(counts) == 10**12
    return counts


ALL_ELEVEN = counts_of(H2O=0.3, CO2=0.2, N2=0.1, H2S=0.05, NH3=0.05, H2=0.05, O2=0.03,
                       CO=0.07, Ar=0.04, CH4=0.1, C2H6=0.01)


def text(value):
    return mp.nstr(value, 25, min_fixed=0, max_fixed=0) if isinstance(value, mpf) else repr(value)


def write(path, head, rows):
    with open(path, "w", encoding="ascii") as file:
        file.write(head)
        for row in rows:
            file.write(",".join(text(value) for value in row) + "\n")
