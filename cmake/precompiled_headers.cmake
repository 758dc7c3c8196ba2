# Headers that nearly every source of the product includes, precompiled once per target. Sources must still include what
# they use: the style check compiles them without this.
set(ZORVU_STANDARD_HEADERS <algorithm> <array> <charconv> <cstdint> <filesystem> <functional> <map> <memory> <optional>
  <set> <stdexcept> <string> <string_view> <utility> <vector>)

function(zorvu_precompile target)
  target_precompile_headers(${target} PRIVATE ${ZORVU_STANDARD_HEADERS} ${ARGN})
endfunction()
