#pragma once

#include <string>

namespace lumen {

/// An SVG of Cairo's with the fill rules of its clips where they have an effect.
/// Cairo before 1.18 writes the even-odd rule to the group that is clipped; it
/// belongs to the path that clips.
std::string with_clip_rules(std::string svg);

}  // namespace lumen
