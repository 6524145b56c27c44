// SPDX-License-Identifier: MIT
#pragma once

// The whole library in one include.

#include <kvgeom/batch/box_tests.h>
#include <kvgeom/batch/composition.h>
#include <kvgeom/batch/mapping.h>
#include <kvgeom/batch/point_tests.h>
#include <kvgeom/batch/unions.h>
#include <kvgeom/boxes/box.h>
#include <kvgeom/boxes/box2d.h>
#include <kvgeom/boxes/box2d_mapping.h>
#include <kvgeom/boxes/box_mapping.h>
#include <kvgeom/boxes/clip_volume.h>
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/assertion_log.h>
#include <kvgeom/kernel/debug_switches.h>
#include <kvgeom/kernel/rounding.h>
#include <kvgeom/kernel/tolerances.h>
#include <kvgeom/kernel/validation_flags.h>
#include <kvgeom/kernel/validity.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/g4x4_builders.h>
#include <kvgeom/maps/g4x4_conversion.h>
#include <kvgeom/maps/matrix.h>
#include <kvgeom/maps/matrix2d.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/maps/transf2d.h>
#include <kvgeom/maps/transf2d_builders.h>
#include <kvgeom/maps/transf_builders.h>
#include <kvgeom/maps/transf_repair.h>
#include <kvgeom/points/mapping.h>
#include <kvgeom/points/mapping2d.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/position2d.h>
#include <kvgeom/points/unit_vector.h>
#include <kvgeom/points/unit_vector2d.h>
#include <kvgeom/points/vector.h>
#include <kvgeom/points/vector2d.h>
#include <kvgeom/textio/text_format.h>
#include <kvgeom/volumes/bore_cone.h>
#include <kvgeom/volumes/bore_line.h>
#include <kvgeom/volumes/bore_line_mapping.h>
#include <kvgeom/volumes/pt_fence.h>
#include <kvgeom/volumes/pt_frustum.h>
#include <kvgeom/volumes/rt_prism.h>
