#include "analysis/shipped_masks.h"

namespace kv408 {

std::vector<std::filesystem::path> shipped_mask_paths(const std::filesystem::path& program,
                                                      std::string_view file) {
    std::vector<std::filesystem::path> paths;
    for (const auto& folder :
         {program / "masks", program.parent_path() / "share" / "kv408" / "masks",
          program.parent_path().parent_path() / "packaging" / "masks"}) {
        paths.push_back((folder / file).lexically_normal());
    }
    return paths;
}

} // namespace kv408
