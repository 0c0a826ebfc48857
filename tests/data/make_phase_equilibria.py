"""Writes phase_equilibria.csv beside this script; needs mpmath.

Each row: a bulk, a temperature, and the state at which a trace of a second phase coexists with it,
by Newton's method in 60 digits on equal fugacities and pressures. The start values have a few
digits; a start that leads elsewhere fails. Pure gases by the rule of equal areas.
"""

from pathlib import Path

from mpmath import cosh, exp, findroot, log, mpf, sinh

from gases import ALL_ELEVEN, GASES, Mixture, R, counts_of, pure, write

HEAD = """\
# Bubble points (0) and dew points (1) in 60 digits, by make_phase_equilibria.py.
# eleven counts of 1e-12,kind,T,P,Vx,Vy,eleven fractions of the other phase
"""
BUBBLE, DEW = 0, 1

COLD_ELEVEN = counts_of(H2O=0.001, CO2=0.3, N2=0.02, H2S=0.2, NH3=0.1, H2=0.001, O2=0.03,
                        CO=0.008, Ar=0.04, CH4=0.1, C2H6=0.2)
FOUR = counts_of(CO2=0.5, CH4=0.2, N2=0.1, H2S=0.2)
BRINE_GAS = counts_of(H2O=0.85, CO2=0.1, CH4=0.05)
AMMONIA_IN_NITROGEN = counts_of(N2=0.81, NH3=0.01, Ar=0.08, CH4=0.1)

# bulk, kind, T, Vx, Vy, other phase at the present components
STATES = [
    (counts_of(CO2=0.7, CH4=0.3), BUBBLE, 220.0, 68.0, 385.2, [0.4728, 0.5272]),
    (counts_of(CO2=0.7, CH4=0.3), DEW, 220.0, 63.5, 588.9, [0.88, 0.12]),
    (FOUR, BUBBLE, 220.0, 65.34, 311.6, [0.2976, 0.3138, 0.07059, 0.318]),
    (FOUR, DEW, 220.0, 59.19, 845.5, [0.5139, 0.01048, 0.423, 0.0526]),
    (counts_of(CO2=0.1, CH4=0.9), BUBBLE, 203.0, 121.385, 129.762, [0.0965, 0.9035]),
    (counts_of(CO2=0.1, CH4=0.9), DEW, 203.0, 107.034, 149.549, [0.1193, 0.8807]),
    (counts_of(H2O=0.5, H2=0.5), DEW, 500.0, 45.26, 191.7, [0.9746, 0.02545]),
    (counts_of(H2O=0.9, N2=0.1), BUBBLE, 400.0, 41.13, 77.13, [0.2887, 0.7113]),
    (counts_of(H2O=0.999, N2=0.001), DEW, 250.0, 35.11, 24209.0, [1.0, 8.506e-8]),
    (BRINE_GAS, BUBBLE, 300.0, 39.81, 146.3, [0.1049, 0.2836, 0.6115]),
    (BRINE_GAS, DEW, 300.0, 36.5, 5670.0, [0.9983, 0.001565, 9.896e-5]),
    (ALL_ELEVEN, DEW, 300.0, 37.003, 1880.3,
     [0.9692, 0.009829, 0.0002369, 0.006767, 0.01253, 2.843e-5, 0.0002165, 0.0001788, 0.0002661,
      0.0006569, 0.0001303]),
    (ALL_ELEVEN, DEW, 300.0, 41.7166, 52.324,
     [0.6746, 0.1168, 0.02674, 0.03839, 0.04985, 0.01074, 0.01209, 0.01886, 0.01572, 0.03322,
      0.002904]),
    (COLD_ELEVEN, BUBBLE, 150.0, 56.3433, 1247.18,
     [6.907e-6, 0.07245, 0.1752, 0.01552, 0.006371, 0.1032, 0.1331, 0.0602, 0.1914, 0.2062,
      0.03629]),
    (COLD_ELEVEN, DEW, 150.0, 49.2291, 12402.8,
     [0.06092, 0.1458, 0.0001124, 0.4056, 0.3036, 3.307e-7, 0.0004746, 5.328e-5, 0.0005722,
      0.003155, 0.07976]),
    (COLD_ELEVEN, BUBBLE, 300.0, 109.068, 157.84,
     [0.0007382, 0.2961, 0.02707, 0.1789, 0.08862, 0.001702, 0.03863, 0.01067, 0.05183, 0.1187,
      0.187]),
    # Two dew points close together, at which other phases appear.
    (AMMONIA_IN_NITROGEN, DEW, 135.5, 43.8177, 245.366, [0.124, 0.7641, 0.0342, 0.0777]),
    (AMMONIA_IN_NITROGEN, DEW, 135.5, 60.3987, 228.809, [0.6228, 0.1165, 0.07937, 0.1814]),
    # Near three phases, of which three pairs come into question.
    (counts_of(H2O=0.2, CO=0.04, C2H6=0.76), BUBBLE, 276.0, 90.6038, 475.964,
     [0.07845, 0.1613, 0.7602]),
    # So cold that the vapour has next to no density.
    (counts_of(O2=0.13, CH4=0.87), DEW, 24.0, 44.8609, 6.33362e11, [0.000849817, 0.99915]),
]
REDUCED_T = (0.35, 0.6, 0.85, 0.99)


def log_fugacities(mixture, x, t, v):
    """ln(f_i/RT) at the molar volume v."""
    b = sum(xi * bi for xi, bi in zip(x, mixture.b_pure))
    return [
        log(xi / (v - b)) + bi / (v - b)
        - 2 * sum(xj * a for xj, a in zip(x, mixture.a_pair[i])) / (R * t * v)
        for i, (xi, bi) in enumerate(zip(x, mixture.b_pure))
    ]


def pressure(mixture, x, t, v):
    b = sum(xi * bi for xi, bi in zip(x, mixture.b_pure))
    a = sum(xi * xj * mixture.a_pair[i][j] for i, xi in enumerate(x) for j, xj in enumerate(x))
    return R * t / (v - b) - a / v**2


def spread(mixture, values):
    full = [mpf(0)] * len(GASES)
    for i, value in zip(mixture.present, values):
        full[i] = value
    return full


def incipient(counts, kind, t, vx, vy, other):
    mixture = Mixture(counts)
    start = (vx, vy) if kind == BUBBLE else (vy, vx)
    bulk = log_fugacities

    def residuals(*logs):
        v, w = exp(logs[0]), exp(logs[1])
        x = [exp(value) for value in logs[2:]]
        here = bulk(mixture, mixture.x, t, v)
        there = bulk(mixture, x, t, w)
        ends = pressure(mixture, mixture.x, t, v) - pressure(mixture, x, t, w)
        return [f - g for f, g in zip(here, there)] + [ends, 1 - sum(x)]

    logs = [log(mpf(value)) for value in (*start, *other)]
    found = [exp(value) for value in findroot(residuals, logs, tol=1e-80)]
    assert all(abs(new / old - 1) < 0.01 for new, old in zip(found, (*start, *other)))
    v, w, x = found[0], found[1], found[2:]
    p = pressure(mixture, mixture.x, t, v)
    assert (v < w) == (kind == BUBBLE)
    return [*counts, kind, t, p, min(v, w), max(v, w), *spread(mixture, x)]


def equal_area(i, reduced_t):
    """Vx, Vy and P of a pure gas; the start values are on the parametric curve."""
    mixture = Mixture(pure(i))
    a, b = mixture.a, mixture.b
    t = float(reduced_t * GASES[i][3])

    def curve(y):
        f = (y * cosh(y) - sinh(y)) / (sinh(y) * cosh(y) - y)
        g = 1 + 2 * f * cosh(y) + f * f
        return f, 27 * f * (f + cosh(y)) / (4 * g * g)

    y = findroot(lambda s: curve(s)[1] - reduced_t, (mpf(0.01), mpf(40)), solver="anderson",
                 tol=1e-20, maxsteps=200)
    f = curve(y)[0]
    starts = [log(b + b * exp(sign * y) / f) for sign in (-1, 1)]

    def residuals(log_vx, log_vy):
        vx, vy = exp(log_vx), exp(log_vy)
        p = pressure(mixture, [1], t, vx)
        area = R * t * log((vy - b) / (vx - b)) + a * (1 / vy - 1 / vx)
        return [p - pressure(mixture, [1], t, vy), area - p * (vy - vx)]

    vx, vy = (exp(value) for value in findroot(residuals, starts, tol=1e-80))
    assert vx < vy
    return t, pressure(mixture, [1], t, vx), vx, vy


def rows():
    for state in STATES:
        yield incipient(*state)
    for i in range(len(GASES)):
        for reduced_t in REDUCED_T:
            t, p, vx, vy = equal_area(i, reduced_t)
            for kind in (BUBBLE, DEW):
                ones = spread(Mixture(pure(i)), [mpf(1)])
                yield [*pure(i), kind, t, p, vx, vy, *ones]


write(Path(__file__).parent / "phase_equilibria.csv", HEAD, rows())
