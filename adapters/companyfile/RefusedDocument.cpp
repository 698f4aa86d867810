#include "adapters/companyfile/RefusedDocument.h"

#include "adapters/companyfile/CompanyErrors.h"

namespace twqb::company {

RefusedDocument::RefusedDocument(ErrorNumber number, std::string_view detail)
    : PlatformError(number, std::string(TextOf(number))), detail_(detail) {}

void RefuseDocument(std::string_view detail) { throw RefusedDocument(error::kParse, detail); }

void RefuseVersion(std::string_view detail) { throw RefusedDocument(kUnknownVersion, detail); }

}  // namespace twqb::company
