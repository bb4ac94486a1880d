// CompositionDeMaps: composes the map built so far (document ↔ text of the step's input) with
// the map of one more step (step input ↔ step output) into document ↔ step output.
//
// Composition keeps both sides partitioned. Where a replacement of either map overlaps
// anything of the other (a later converter deleting part of a placeholder, a replacement that
// covers an earlier one), the stretches they touch are glued into one replacement: its internal
// units map, as a whole, onto the union of the document stretches. A glued segment is
// Remplacable only when all its parts are, and CaractereSpecial when any is. At one position,
// an earlier deletion comes before a later insertion. Cost: linear in the two segment counts.
#pragma once

#include <vector>

#include "ferlane/MapChaines.h"

// Written over `etape`'s buffer: with room for avant.size() more segments reserved there, the
// composition claims no memory.
std::vector<SegmentDeMap> ComposeMaps(const std::vector<SegmentDeMap>& avant,
                                      std::vector<SegmentDeMap>&& etape);

// Merges neighbours that carry nothing apart: identity with identity, and two deletions (or two
// insertions) with the same flags.
void CompacteSegments(std::vector<SegmentDeMap>& segments);
