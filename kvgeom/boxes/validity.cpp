// SPDX-License-Identifier: MIT
#include <kvgeom/boxes/box.h>
#include <kvgeom/boxes/box2d.h>
#include <kvgeom/boxes/clip_volume.h>
#include <kvgeom/boxes/validity.h>
#include <kvgeom/points/validity.h>

void Gassert_valid(const GBox& box) {
    Gassert_valid(box.m_low);
    Gassert_valid(box.m_high);
}

void Gassert_valid(const GClipVolume&) {}

void Gassert_valid(const GBox2d& box) {
    Gassert_valid(box.m_low);
    Gassert_valid(box.m_high);
}
