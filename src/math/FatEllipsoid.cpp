// FatEllipsoid - elliptic integrals of complex arguments by Carlson's duplication, equations by Newton's method.
// Sources: Carlson, "Numerical computation of real or complex elliptic integrals", Numerical Algorithms 10 (1995); the
// map: Lee, Conformal Projections Based on Elliptic Functions (1976).
#include "math/FatEllipsoid.h"

#include "math/Angles.h"
#include "math/IsometricLatitude.h"

namespace orvex::detail {

namespace {

/// A complex number, of which no function of the runtime computes anything.
struct Complex {
  double re, im;

  Complex(double real, double imaginary = 0) : re(real), im(imaginary) {}

  friend Complex operator+(Complex a, Complex b) { return {a.re + b.re, a.im + b.im}; }
  friend Complex operator-(Complex a, Complex b) { return {a.re - b.re, a.im - b.im}; }
  friend Complex operator*(Complex a, Complex b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }
  friend Complex operator/(Complex a, Complex b) {
    const double norm = b.re * b.re + b.im * b.im;
    return {(a.re * b.re + a.im * b.im) / norm, (a.im * b.re - a.re * b.im) / norm};
  }
};

double Size(Complex z) {
  return Hypot(z.re, z.im);
}

/// The root whose real part is not negative.
Complex Root(Complex z) {
  const double size = Size(z);
  if (size == 0) return 0;
  if (z.re >= 0) {
    const double re = Sqrt((size + z.re) / 2);
    return {re, z.im / (2 * re)};
  }
  const double im = CopySign(Sqrt((size - z.re) / 2), z.im);
  return {z.im / (2 * im), im};
}

/// artanh z, the imaginary part within a quarter turn.
Complex ArcTanh(Complex z) {
  // Both logarithms' sizes from 1 + 4 x / |1 - z|^2, which keeps the digits of small numbers.
  const double across = Square(1 - z.re) + Square(z.im);
  return {Log1p(4 * z.re / across) / 4, (Atan2(z.im, 1 + z.re) + Atan2(z.im, 1 - z.re)) / 2};
}

/// The logarithm, the imaginary part within half a turn.
Complex Logarithm(Complex z) {
  return {Log(Size(z)), Atan2(z.im, z.re)};
}

/// A complex angle, by its sine and cosine.
struct Angle {
  Complex sine, cosine;

  explicit Angle(Complex phi) : sine(0), cosine(0) {
    const auto [s, c] = SinCos(phi.re);
    const double ch = Cosh(phi.im), sh = Sinh(phi.im);
    sine = {s * ch, c * sh};
    cosine = {c * ch, -s * sh};
  }
};

/// Carlson's R_F(x, y, 1) and R_D(x, y, 1).
struct Integrals {
  Complex RF, RD;
};

Integrals Duplicate(Complex x, Complex y) {
  Complex z = 1, sum = 0, mean = 0, X = 0, Y = 0;
  double power = 1;
  for (int pass = 0; pass < 60; ++pass) {
    mean = (x + y + 3 * z) / 5;
    X = (mean - x) / mean;
    Y = (mean - y) / mean;
    if (Size(X) < 1e-3 && Size(Y) < 1e-3) break;  // what the series below leave out has the sixth power
    const Complex rx = Root(x), ry = Root(y), rz = Root(z), shift = rx * ry + rx * rz + ry * rz;
    sum = sum + power / (rz * (z + shift));
    power /= 4;
    x = (x + shift) / 4;
    y = (y + shift) / 4;
    z = (z + shift) / 4;
  }
  const Complex Z = (X + Y) / -3, XY = X * Y, Z2 = Z * Z;
  const Complex E2 = XY - 6 * Z2, E3 = (3 * XY - 8 * Z2) * Z, E4 = 3 * (XY - Z2) * Z2, E5 = XY * Z2 * Z;
  const Complex RD = 3 * sum + power / (mean * Root(mean)) *
                                   (1 - 3.0 / 14 * E2 + 1.0 / 6 * E3 + 9.0 / 88 * E2 * E2 - 3.0 / 22 * E4 -
                                    9.0 / 52 * E2 * E3 + 3.0 / 26 * E5);
  const Complex m = (x + y + z) / 3, U = (m - x) / m, V = (m - y) / m, W = (U + V) * -1;
  const Complex e2 = U * V - W * W, e3 = U * V * W;
  return {(1 - e2 / 10 + e3 / 14 + e2 * e2 / 24 - 3.0 / 44 * e2 * e3) / Root(m), RD};
}

/// The meridian arc in semi-major axes, within a quarter turn of the equator.
Complex Arc(double e2, const Angle& phi) {
  const Complex s = phi.sine, s2 = s * s, delta2 = 1 - e2 * s2;
  const Integrals integrals = Duplicate(phi.cosine * phi.cosine, delta2);
  return s * integrals.RF - e2 / 3 * s * s2 * integrals.RD - e2 * s * phi.cosine / Root(delta2);
}

/// d arc / d phi.
Complex ArcSlope(double e2, const Angle& phi) {
  const Complex delta2 = 1 - e2 * phi.sine * phi.sine;
  return (1 - e2) / (delta2 * Root(delta2));
}

/// Isometric latitude of the northern half; by the cosine, which keeps its digits at the pole.
Complex Isometric(double e2, const Angle& phi) {
  const double e = Sqrt(e2);
  return Logarithm((1 + phi.sine) / phi.cosine) - e * ArcTanh(e * phi.sine);
}

/// Solves `value(phi) = target` from a start nearby, stepping by Newton's method.
template <class Value, class Slope>
Complex Solve(Complex phi, Complex target, const Value& value, const Slope& slope) {
  constexpr double kRelative = 1e-12;  // of a step: the next one would be lost in rounding
  for (int pass = 0; pass < 30; ++pass) {
    const Angle angle(phi);
    const Complex step = (target - value(angle)) / slope(angle);
    phi = phi + step;
    if (!(Size(step) > kRelative * Size(phi))) break;
  }
  return phi;
}

/// The same along a path from the real axis, so that the solution stays on its sheet.
template <class Value, class Slope>
Complex Follow(double start, Complex target, const Value& value, const Slope& slope) {
  constexpr double kStride = 0.2;
  const int steps = static_cast<int>(Abs(target.im) / kStride) + 1;
  Complex phi = start;
  for (int i = 1; i <= steps; ++i) phi = Solve(phi, {target.re, target.im * i / steps}, value, slope);
  return phi;
}

/// Authalic function q over 1 - e^2 of the sine of a latitude.
double Authalic(double e2, double s) {
  const double e = Sqrt(e2);
  return s / (1 - e2 * s * s) + Atanh(e * s) / e;
}

constexpr double kAtPole = 1e-13;  // radians from it; within, the map's equations have lost their digits

}  // namespace

double FatArc(double e2, double phi) {
  if (!(Abs(phi) <= kHalfPi)) return CopySign(FatArc(e2, kHalfPi), phi) + (phi - CopySign(kHalfPi, phi));
  return Arc(e2, Angle(phi)).re;
}

double FatFootpoint(double e2, double arc) {
  const double quarter = FatArc(e2, kHalfPi);
  if (!(Abs(arc) < quarter)) return CopySign(kHalfPi, arc) + (arc - CopySign(quarter, arc));
  // The arc's slope falls or rises all the way, so that the root stays between two latitudes.
  double low = 0, high = kHalfPi, phi = Abs(arc) / quarter * kHalfPi;
  for (int pass = 0; pass < 100; ++pass) {
    const Angle angle{Complex(phi)};
    const double rest = Abs(arc) - Arc(e2, angle).re;
    (rest > 0 ? low : high) = phi;
    double next = phi + rest / ArcSlope(e2, angle).re;
    if (!(next >= low && next <= high)) next = (low + high) / 2;
    const double step = next - phi;
    phi = next;
    if (Abs(step) <= 1e-16) break;
  }
  return CopySign(phi, arc);
}

double FatAuthalicLatitude(double e2, double relative) {
  if (!(Abs(relative) < 1)) return CopySign(kHalfPi, relative);
  const double target = Abs(relative) * Authalic(e2, 1);
  double low = 0, high = 1, s = Abs(relative);
  for (int pass = 0; pass < 100; ++pass) {
    const double rest = target - Authalic(e2, s);
    (rest > 0 ? low : high) = s;
    double next = s + rest * Square(1 - e2 * s * s) / 2;
    if (!(next >= low && next <= high)) next = (low + high) / 2;
    const double step = next - s;
    s = next;
    if (Abs(step) <= 1e-17) break;
  }
  return CopySign(Asin(s), relative);
}

TransversePlace TransverseMap(double e2, GeodeticPlace place) {
  const double lat = Abs(place.lat), lon = Abs(place.lon);
  if (kHalfPi - lat < kAtPole) return {CopySign(FatArc(e2, kHalfPi), place.lat), 0};
  const Complex target(Isometric(e2, Angle(lat)).re, lon);
  const auto value = [e2](const Angle& phi) { return Isometric(e2, phi); };
  const auto slope = [e2](const Angle& phi) { return (1 - e2) / ((1 - e2 * phi.sine * phi.sine) * phi.cosine); };
  const Complex z = Arc(e2, Angle(Follow(lat, target, value, slope)));
  return {CopySign(z.re, place.lat), CopySign(z.im, place.lon)};
}

GeodeticPlace TransverseUnmap(double e2, TransversePlace place) {
  constexpr double kRounding = 1e-12;
  const double quarter = FatArc(e2, kHalfPi);
  if (!(Abs(place.north) <= quarter + kRounding)) return {__builtin_nan(""), __builtin_nan("")};
  const double north = Clamp(Abs(place.north), 0, quarter);
  if (quarter - north < kAtPole && Abs(place.east) < kAtPole) return {CopySign(kHalfPi, place.north), 0};
  const Complex target(north, Abs(place.east));
  const auto value = [e2](const Angle& phi) { return Arc(e2, phi); };
  const auto slope = [e2](const Angle& phi) { return ArcSlope(e2, phi); };
  const Complex psi = Isometric(e2, Angle(Follow(FatFootpoint(e2, north), target, value, slope)));
  double lat = 0;
  LatitudeFromIsometric(psi.re, EccentricTerm(Sqrt(e2)), lat);
  return {CopySign(lat, place.north), CopySign(psi.im, place.east)};
}

}  // namespace orvex::detail
