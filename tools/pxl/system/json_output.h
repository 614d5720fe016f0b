// JSON on a stream, in the form that all commands print.
#ifndef TOOLS_PXL_SYSTEM_JSON_OUTPUT_H
#define TOOLS_PXL_SYSTEM_JSON_OUTPUT_H

#include <nlohmann/json.hpp>
#include <ostream>

namespace pxl {

using Json = nlohmann::ordered_json;

// File names may hold bytes that are not UTF-8; these are replaced, since JSON
// allows none.
inline void PrintJson(std::ostream& stream, const Json& json) {
  stream << json.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
}

}  // namespace pxl

#endif
