# The filter of the tests of boxes against a bore line, in kvgeom/volumes/bore_line_kernels.h. For an axis let d
# be the direction, p the point, a..b the box enlarged by e, exact, and A..B the same rounded; every rounded
# operation multiplies its exact result by some 1 + e', |e'| <= u = 2^-53.
#
# The filter has r = 1 / d and low r - (p + e) r, high r - (p - e) r, which are, since low = a + e,
#     (1 / d) ((a - p) G + (p + e) (G - F))  and  (1 / d) ((b - p) G + (p - e) (G - F)),
#     G: of r, of the product (none where it is fused), of the sum; F: of r, of p + e, its product, the sum.
# The single test has, with the extent E of one rounding, u = (p - A) / E and v = d / E,
#     t0 = -u / v = (1 / d) (A - p) K,  K: of p - A, u and the quotient; of v as a divisor,
#     t1 = (1 - u) / v = (1 / d) ((B - p) X + (p - A) (X - Y)) L,
#     X: of E; Y: of p - A and u; L: of 1 - u and the quotient; of v as a divisor.
# With A = a + a h, a = (a - p) + p, and for B likewise, the differences are
#     (1 / d) ((a - p) (K (1 + h) - G) + p h K - (p + e) (G - F)),
#     (1 / d) ((b - p) (X L (1 + h) - G) + (p - A) (X - Y) L + p h X L - (p - e) (G - F)).
# The distances from p are, divided by d, at most the largest |t| but for roundings, and |p| and |p - e| at
# most |p| + e. Two numbers of either kind are compared, so that each may use half of the margin, of which a part
# 64 u is left for the roundings of the margin, of the comparison, and of the numbers that it is made of.
u = 1b-53;
furthest = @kFurthestMargin@ / 2 * (1 - 64 * u);
offset = @kOffsetMargin@ / 2 * (1 - 64 * u);
G = (1 + r) * (1 + g1) * (1 + g2);
F = (1 + r) * (1 + f1) * (1 + f2) * (1 + g2);
K = (1 + k1) * (1 + k2) * (1 + k3) / (1 + v);
X = 1 + x;
Y = (1 + y1) * (1 + y2);
L = (1 + l1) * (1 + l2) / (1 + v);
{
    |r| <= 1b-53 /\ |g1| <= 1b-53 /\ |g2| <= 1b-53 /\ |f1| <= 1b-53 /\ |f2| <= 1b-53 /\ |h| <= 1b-53 /\
    |k1| <= 1b-53 /\ |k2| <= 1b-53 /\ |k3| <= 1b-53 /\ |v| <= 1b-53 /\ |x| <= 1b-53 /\
    |y1| <= 1b-53 /\ |y2| <= 1b-53 /\ |l1| <= 1b-53 /\ |l2| <= 1b-53
->
    |K * (1 + h) - G| / furthest <= 1 /\
    (|h * K| + |G - F|) / offset <= 1 /\
    (|X * L * (1 + h) - G| + |(X - Y) * L|) / furthest <= 1 /\
    (|h * X * L| + |G - F|) / offset <= 1
}
