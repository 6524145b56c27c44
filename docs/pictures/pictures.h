// SPDX-License-Identifier: MIT
#pragma once

#include "docs/pictures/picture.h"

namespace kvpictures {

// The records, what they are made of and what comes out of them.

Picture DrawBox();
Picture DrawBoxUnion();
Picture DrawBoxMapping();
Picture DrawBoxClipping();
Picture DrawClipVolume();
Picture DrawClipVolumeTest();
Picture DrawBoreLine();
Picture DrawBoreLineTest();
Picture DrawBoreLineClipping();
Picture DrawBoreCone();
Picture DrawFence();
Picture DrawFrustum();
Picture DrawPrism();

// The conventions.

Picture DrawHandedness();
Picture DrawRows();
Picture DrawForms();
Picture DrawProducts();
Picture DrawAngles();

}  // namespace kvpictures
