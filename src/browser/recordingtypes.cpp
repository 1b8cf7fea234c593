#include "recordingtypes.h"

#include <algorithm>

namespace {

constexpr size_t kConcert = 1;
static_assert(kBuiltInTypes[kConcert].name == "Concert");

} // namespace

int FindBuiltInType(std::string_view name)
{
    if (name.empty())
        return kConcert;
    const auto *type = std::ranges::find(kBuiltInTypes, name, &RecordingType::name);
    return type == kBuiltInTypes.end() ? -1 : static_cast<int>(type - kBuiltInTypes.begin());
}

const RecordingType &LookOf(std::string_view typeName)
{
    const int type = FindBuiltInType(typeName);
    return kBuiltInTypes[type < 0 ? kConcert : static_cast<size_t>(type)];
}
