# What nearly every source of the product includes, compiled once for each target. Sources include what they use all the
# same: the style check compiles each without this.
set(ZORVU_STANDARD_HEADERS <algorithm> <array> <charconv> <cstdint> <filesystem> <functional> <map> <memory> <optional>
  <set> <stdexcept> <string> <string_view> <utility> <vector>)

function(zorvu_precompile target)
  target_precompile_headers(${target} PRIVATE ${ZORVU_STANDARD_HEADERS} ${ARGN})
endfunction()
