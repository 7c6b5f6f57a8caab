#!/usr/bin/env python3
"""Writes georef_controls.csv and georef.csv: images of check points under every georeferencing method, to 50 digits.

Independent of the library's way: plain monomials of shifted coordinates and normal equations for the least-squares fits,
the indefinite system of weights and affine part together for the warps, all in 50-digit arithmetic. Methods are numbered
as in the table of names. Set "map" is examples/georef/controls.csv; set "far" has 30 noisy controls whose coordinates lie
5e6 from the origin on both sides.
"""
import csv
import pathlib
import random

from mpmath import exp, log, lu_solve, matrix, mp, mpf, sqrt

mp.dps = 50
HERE = pathlib.Path(__file__).parent
TERMS = {1: 3, 2: 4, 3: 6, 4: 10}


def read_map():
    path = HERE.parent.parent / "examples" / "georef" / "controls.csv"
    with path.open(encoding="ascii") as file:
        return [tuple(float(row[k]) for k in ("x", "y", "easting", "northing")) for row in csv.DictReader(file)]


def make_far():
    rng = random.Random(7)
    rows = []
    for _ in range(30):
        x, y = rng.uniform(0, 1500), rng.uniform(0, 900)
        rows.append((5e6 + x, -4.8e6 + y,
                     5.1e6 + 0.8 * x - 0.61 * y + 2e-4 * x * y + rng.gauss(0, 2),
                     -6.2e6 + 0.58 * x + 0.83 * y - 1e-4 * x * x + rng.gauss(0, 2)))
    return rows


def least_squares(rows, values):
    a, b = matrix(rows), matrix(values)
    return lu_solve(a.T * a, a.T * b)


def monomials(x, y, count):
    return [mpf(1), x, y, x * y, x * x, y * y, x**3, x * x * y, x * y * y, y**3][:count]


def helmert(controls):
    rows, values = [], []
    for x, y, X, Y in controls:
        rows += [[x, -y, 1, 0], [y, x, 0, 1]]
        values += [X, Y]
    a, b, tx, ty = least_squares(rows, values)
    return lambda x, y: (a * x - b * y + tx, b * x + a * y + ty)


def polynomial(controls, count):
    rows = [monomials(x, y, count) for x, y, _, _ in controls]
    cx = least_squares(rows, [c[2] for c in controls])
    cy = least_squares(rows, [c[3] for c in controls])

    def image(x, y):
        t = monomials(x, y, count)
        return sum(t[i] * cx[i] for i in range(count)), sum(t[i] * cy[i] for i in range(count))
    return image


def distance(p, q):
    return sqrt((p[0] - q[0])**2 + (p[1] - q[1])**2)


def radial(controls, method):
    side = max(max(c[k] for c in controls) - min(c[k] for c in controls) for k in (0, 1))
    n = len(controls)
    s = sum(min(distance(p, q) for q in controls if q is not p) for p in controls) / n / side
    basis = {6: lambda r: r * r * log(r) if r > 0 else mpf(0), 7: lambda r: r**3, 8: lambda r: (1 + r / s) * exp(-r / s),
             9: lambda r: exp(-r / s), 10: lambda r: 1 / (1 + (r / s)**2)}[method]

    def row(x, y):
        return [basis(distance((x, y), c) / side) for c in controls] + [mpf(1), x, y]
    a = matrix(n + 3, n + 3)
    for i, c in enumerate(controls):
        for j, value in enumerate(row(c[0], c[1])):
            a[i, j] = value
        for k, value in enumerate((mpf(1), c[0], c[1])):
            a[n + k, i] = value
    wx = lu_solve(a, matrix([c[2] for c in controls] + [0, 0, 0]))
    wy = lu_solve(a, matrix([c[3] for c in controls] + [0, 0, 0]))

    def image(x, y):
        t = row(x, y)
        return sum(t[i] * wx[i] for i in range(n + 3)), sum(t[i] * wy[i] for i in range(n + 3))
    return image


def inverse_distance(controls):
    affine = polynomial(controls, 3)
    residuals = []
    for x, y, X, Y in controls:
        p = affine(x, y)
        residuals.append((X - p[0], Y - p[1]))

    def image(x, y):
        weights = [1 / distance((x, y), c)**2 for c in controls]
        p = affine(x, y)
        return tuple(p[k] + sum(w * r[k] for w, r in zip(weights, residuals)) / sum(weights) for k in (0, 1))
    return image


def transform(method, controls):
    if method == 0:
        return helmert(controls)
    if method in TERMS:
        return polynomial(controls, TERMS[method])
    return inverse_distance(controls) if method == 11 else radial(controls, method)


def main():
    far = make_far()
    with (HERE / "georef_controls.csv").open("w", encoding="ascii", newline="\n") as out:
        out.write("# Made by make_georef.py\nx,y,easting,northing\n")
        out.writelines(",".join(repr(v) for v in row) + "\n" for row in far)
    checks = {"map": [(812.5, 4033.0), (3200.0, 2600.0), (6400.0, 0.0), (-2000.0, 9000.0)],
              "far": [(5000411.5, -4799800.25), (5000750.0, -4799550.0), (5001500.0, -4800000.0), (5009000.0, -4790000.0),
                      (5100000.0, -4650000.0)]}
    with (HERE / "georef.csv").open("w", encoding="ascii", newline="\n") as out:
        out.write("# Made by make_georef.py in 50-digit arithmetic\nset,method,x,y,easting,northing\n")
        for name, rows in (("map", read_map()), ("far", far)):
            # Exact shifts of the origin change no fit, and keep the numbers of the normal equations small.
            ox, oy = mpf(rows[0][0]), mpf(rows[0][1])
            controls = [(mpf(x) - ox, mpf(y) - oy, mpf(X), mpf(Y)) for x, y, X, Y in rows]
            for method in (0, 1, 2, 3, 4, 6, 7, 8, 9, 10, 11):
                image = transform(method, controls)
                for x, y in checks[name]:
                    X, Y = image(mpf(x) - ox, mpf(y) - oy)
                    out.write(f"{name},{method},{x!r},{y!r},{mp.nstr(X, 17)},{mp.nstr(Y, 17)}\n")


if __name__ == "__main__":
    main()
