# The filter of the tests against planes, in kvgeom/boxes/plane_test_kernels.h. Let n be the normal, o the
# offset, p the point, N = |nx| + |ny| + |nz|, S and O the largest components of p and o.
#
# Every rounded operation multiplies its exact result by some 1 + e, |e| <= u = 2^-53. So the number of the
# single test, ((nx (px + ox)) + (ny (py + oy))) + (nz (pz + oz)), is a sum over the axes of
#     n (p + o) C,  C with a factor each for p + o, for the product and for at most two sums,
# and that of the filter, whose n % o comes first, then the products of z, y and x, a sum of
#     n p D,  D with a factor for the product (none where it is fused) and for at most three sums,
#     n o E,  E with one for the product, at most two for the sums of n % o and three for those after it.
# They differ by no more than N S max|C - D| + N O max|C - E|. Factors that an axis doesn't have are 1 + 0.
#
# The margin is computed, N too, and taken from the limit, with less than 16 roundings, for which a part
# 16 u of it is left here; the rounding of the limit itself, u of it, the margin has a term for.
u = 1b-53;
margin = @kPlaneMargin@;
C = (1 + c1) * (1 + c2) * (1 + c3) * (1 + c4);
D = (1 + d1) * (1 + d2) * (1 + d3) * (1 + d4);
E = (1 + e1) * (1 + e2) * (1 + e3) * (1 + e4) * (1 + e5) * (1 + e6);
{
    |c1| <= 1b-53 /\ |c2| <= 1b-53 /\ |c3| <= 1b-53 /\ |c4| <= 1b-53 /\
    |d1| <= 1b-53 /\ |d2| <= 1b-53 /\ |d3| <= 1b-53 /\ |d4| <= 1b-53 /\
    |e1| <= 1b-53 /\ |e2| <= 1b-53 /\ |e3| <= 1b-53 /\ |e4| <= 1b-53 /\ |e5| <= 1b-53 /\ |e6| <= 1b-53
->
    |C - D| / (margin * (1 - 16 * u)) <= 1 /\
    |C - E| / (margin * (1 - 16 * u)) <= 1 /\
    u / (margin * (1 - 16 * u)) <= 1
}
