// What a request is refused for before anything of it is carried out, beyond what makes its document no qbXML: values
// of the wrong form, elements that are missing, bounds the wrong way round.
//
// Nothing here reads the company file: the same request is refused whatever the file holds.
#pragma once

#include <optional>
#include <pugixml.hpp>

#include "adapters/companyfile/Status.h"
#include "messages/Schema.h"
#include "messages/Validation.h"

namespace twqb::company {

// Whether QuickBooks answers the problem with a status of the one request. The others are found by the parser behind
// it, which knows the names and places of elements, the words of enumerations, and what a whole number or a GUID is:
// they refuse the document.
[[nodiscard]] bool IsToldByStatus(const messages::Problem& problem);

// 1060 for an identifier that is too long.
[[nodiscard]] std::optional<Status> CheckRequestId(pugi::xml_node request);
// Of a request whose values are all well-formed: 3030 and 3031 for bounds the wrong way round, 3210 for a limit
// below 1.
[[nodiscard]] std::optional<Status> CheckConditions(pugi::xml_node request, const messages::Message& message);

}  // namespace twqb::company
