"""Writes critical_points.csv and spinodals.csv beside this script; needs mpmath.

Every root of the two conditions in 60 digits. Each one is then held against the Helmholtz energy
itself, of which nothing else is used: the smallest eigenvalue of its Hessian in the amounts is 0,
its third derivative in the direction of that eigenvector too, and the sign of the fourth, taken
along the path of least energy, is the one of the test of local stability.
"""

from pathlib import Path

from mpmath import diff, eigsy, im, log, matrix, mp, mpf, polyroots, re, sqrt

from gases import ALL_ELEVEN, GASES, Mixture, R, counts_of, pure, write

CRITICAL_HEAD = """\
# All critical points in 60 digits, by make_critical.py; a mixture without any has one row of zeros.
# eleven counts of 1e-12,how many,T,P,V,V - b,1 where locally stable
"""
SPINODAL_HEAD = """\
# Spinodal volumes in 60 digits, by make_critical.py, zeros behind the last one.
# eleven counts of 1e-12,0 diffusional or 1 mechanical,T,how many,volumes
"""


def water_with(**parts):
    rest = 10**12 - sum(round(part * 10**12) for part in parts.values())
    return counts_of(H2O=rest / 10**12, **parts)


FOUR_POINTS = counts_of(H2O=0.741, O2=0.011, C2H6=0.248)
TWO = counts_of(CO2=0.7, CH4=0.3)
TRACE = counts_of(CO2=1e-12, CH4=1 - 1e-12)

EVEN_ELEVEN = [(10**12 + i) // 11 for i in range(11)]

COMPOSITIONS = (
    [pure(i) for i in range(len(GASES))]
    + [TWO, TRACE, counts_of(CO2=1 - 1e-12, CH4=1e-12), FOUR_POINTS, ALL_ELEVEN, EVEN_ELEVEN]
    + [water_with(CO2=x) for x in (1e-12, 0.1, 0.4, 0.5, 0.6, 0.9, 0.99, 1 - 1e-12)]
    + [water_with(CH4=x) for x in (0.05, 0.3, 0.5, 0.9, 0.95, 1 - 1e-6)]
    + [water_with(N2=x) for x in (0.1, 0.4, 0.7, 0.99)]
    + [water_with(H2=x) for x in (1e-12, 0.2, 0.5, 0.8, 1 - 1e-12)]
    + [counts_of(H2O=0.9, CO2=0.05, CH4=0.05 - 2e-12, N2=1e-12, H2=1e-12),
       counts_of(C2H6=1 - 1e-12, Ar=1e-12), counts_of(C2H6=0.5, Ar=0.5)]
)
SPINODALS = [
    (pure(1), [5, 100, 300, "304.1279", 304.128 * (1 - 1e-9), 310]),
    (TWO, [20, 220, 273, "273.287", 280, 400]),
    (FOUR_POINTS, [300, 405, 450, 500, 520]),
    (EVEN_ELEVEN, [5, 200, 300, 400, 600]),
    (TRACE, [1, 150, 190]),
    (water_with(CO2=0.9), [80, 150, 334]),
]


class Fluid(Mixture):
    def __init__(self, counts):
        super().__init__(counts)
        total = sum(self.x)  # not quite 1, as the fractions are doubles
        self.x = [x / total for x in self.x]
        self.b = sum(x * b for x, b in zip(self.x, self.b_pure))
        self.s = [sqrt(a) for a in self.a_pure]
        self.s_mix = sum(x * s for x, s in zip(self.x, self.s))
        self.d = [s * self.b - b * self.s_mix for s, b in zip(self.s, self.b_pure)]

    def mean(self, *factors):
        return sum(x * mp.fprod(values) for x, *values in zip(self.x, *factors))

    def pressure(self, t, w):
        return R * t / w - self.s_mix**2 / (self.b + w) ** 2

    def spinodal_temperature(self, w):
        tau = [s * w + d for s, d in zip(self.s, self.d)]
        return 2 * self.mean(tau, tau) / (R * (self.b + w) ** 3)

    def energy(self, t, v, amounts):
        """The Helmholtz energy over RT but for terms that are linear in the amounts."""
        b = sum(n * bi for n, bi in zip(amounts, self.b_pure))
        s = sum(n * si for n, si in zip(amounts, self.s))
        return sum(n * log(n / (v - b)) for n in amounts) - s**2 / (R * t * v)

    def hessian(self, t, v):
        """Of the above, for amounts in units of the roots of the fractions."""
        u = 1 / (v - self.b)
        size = len(self.x)
        h = matrix(size, size)
        for i in range(size):
            for j in range(size):
                pair = u * (self.b_pure[i] + self.b_pure[j])
                pair += u * u * self.b_pure[i] * self.b_pure[j]
                pair -= 2 * self.s[i] * self.s[j] / (R * t * v)
                h[i, j] = (i == j) + sqrt(self.x[i] * self.x[j]) * pair
        return h

    def check(self, t, v, critical):
        """Whether the fourth derivative is above 0, where it is a critical point."""
        values, vectors = eigsy(self.hessian(t, v))
        assert abs(values[0]) < mpf(10) ** -40 and all(value > 0 for value in values[1:])
        if not critical:
            return None
        axes = [[sqrt(x) * vectors[i, k] for i, x in enumerate(self.x)]
                for k in range(len(self.x))]
        scale = min(x / abs(q) for x, q in zip(self.x, axes[0]) if q) / 10

        def along(step, k=0, side=0):
            return self.energy(t, v, [x + scale * (step * q + side * p)
                                      for x, q, p in zip(self.x, axes[0], axes[k])])

        third = diff(along, 0, 3)
        fourth = diff(along, 0, 4)
        assert abs(third) < mpf(10) ** -25 * abs(fourth)
        for k in range(1, len(self.x)):
            bend = diff(lambda step, side, k=k: along(step, k, side), (0, 0), (2, 1))
            fourth -= 3 * bend**2 / (values[k] * scale**2)
        return fourth > 0

    def critical_points(self):
        mean, b, s, d, b_i = self.mean, self.b, self.s, self.d, self.b_pure
        roots = positive_roots([
            mean(s, s, s),
            b * mean(s, s, s) + 3 * mean(s, s, d) - 3 * mean(b_i, s) * mean(s, s),
            3 * b * mean(s, s, d) + 3 * mean(s, d, d) - 6 * mean(b_i, s) * mean(s, d)
            - 3 * mean(b_i, d) * mean(s, s),
            3 * b * mean(s, d, d) + mean(d, d, d) - 3 * mean(b_i, s) * mean(d, d)
            - 6 * mean(b_i, d) * mean(s, d),
            b * mean(d, d, d) - 3 * mean(b_i, d) * mean(d, d)])
        for w in roots:
            t = self.spinodal_temperature(w)
            stable = self.check(t, self.b + w, True)
            tau = [(si * w + di) / (self.b + w) for si, di in zip(s, d)]
            k = 2 / (R * t)
            test = k**2 * mean(tau, tau, tau, tau) - 6 * k * mean(b_i, tau, tau)
            assert (test + 3 * mean(b_i, b_i) < 0) == stable
            yield [len(roots), t, self.pressure(t, w), self.b + w, w, int(stable)]

    def spinodal(self, t, mechanical):
        def moment(*factors):
            return mpf(0) if mechanical and self.d in factors else self.mean(*factors)

        b, rt, s, d = self.b, R * t, self.s, self.d
        square = self.s_mix**2 if mechanical else self.mean(s, s)
        roots = positive_roots([rt, 3 * b * rt - 2 * square, 3 * b**2 * rt - 4 * moment(s, d),
                                b**3 * rt - 2 * moment(d, d)])
        for w in roots:
            if mechanical:
                slope = diff(lambda v: R * t / (v - b) - (self.s_mix / v) ** 2, b + w)
                assert abs(slope) < mpf(10) ** -40 * rt / w**2
            else:
                values = eigsy(self.hessian(t, b + w), eigvals_only=True)
                assert abs(values[0]) < mpf(10) ** -35
        return [b + w for w in roots]


def positive_roots(coefficients):
    """The real roots above 0, ascending; those at 0 have to be there exactly."""
    while abs(coefficients[-1]) < mpf(10) ** -40 * coefficients[0]:
        coefficients = coefficients[:-1]
    roots = polyroots(coefficients, maxsteps=1000, extraprec=600)
    return sorted(re(w) for w in roots if abs(im(w)) < mpf(10) ** -40 * abs(w) and re(w) > 0)


def critical_rows():
    for counts in COMPOSITIONS:
        found = list(Fluid(counts).critical_points()) or [[0] * 6]
        for point in found:
            yield [*counts, *point]


def spinodal_rows():
    for counts, temperatures in SPINODALS:
        fluid = Fluid(counts)
        for t in temperatures:
            t = float(t)
            for mechanical in (0, 1):
                volumes = fluid.spinodal(mpf(t), mechanical)
                rest = [0] * (3 - len(volumes))
                yield [*counts, mechanical, t, len(volumes), *volumes, *rest]


FOLDER = Path(__file__).parent
write(FOLDER / "critical_points.csv", CRITICAL_HEAD, critical_rows())
write(FOLDER / "spinodals.csv", SPINODAL_HEAD, spinodal_rows())
