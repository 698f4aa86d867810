#include "messages/Rows.h"
#include "messages/Tables.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr Element kClassAdd[] = {
    Text("Name", 31),
    Leaf("IsActive", Type::Bool).Opt(),
    Ref<0>("ParentRef").Opt(),
};

constexpr Element kClassAddRequest[] = {
    Aggregate("ClassAdd", kClassAdd),
};

constexpr Element kClassRet[] = {
    Leaf("ListID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Text("Name", 31),
    Text("FullName", 159),
    Leaf("IsActive", Type::Bool).Opt(),
    Ref<0>("ParentRef").Opt(),
    Leaf("Sublevel", Type::Int),
};

constexpr Element kClassQueryResponse[] = {
    Aggregate("ClassRet", kClassRet).Opt().Rep(),
};

constexpr Element kJobTypeAddRequest[] = {
    Aggregate("JobTypeAdd", kClassAdd),
};

constexpr Element kJobTypeQueryResponse[] = {
    Aggregate("JobTypeRet", kClassRet).Opt().Rep(),
};

constexpr Element kPaymentMethodAdd[] = {
    Text("Name", 31),
    Leaf("IsActive", Type::Bool).Opt(),
};

constexpr Element kPaymentMethodAddRequest[] = {
    Aggregate("PaymentMethodAdd", kPaymentMethodAdd),
};

constexpr Element kPaymentMethodRet[] = {
    Leaf("ListID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Text("Name", 31),
    Leaf("IsActive", Type::Bool).Opt(),
};

constexpr Element kPaymentMethodQueryResponse[] = {
    Aggregate("PaymentMethodRet", kPaymentMethodRet).Opt().Rep(),
};

constexpr Element kSalesTaxCodeAdd[] = {
    Text("Name", 3),
    Leaf("IsActive", Type::Bool).Opt(),
    Leaf("IsTaxable", Type::Bool),
    Text("Desc", 31).Opt(),
};

constexpr Element kSalesTaxCodeAddRequest[] = {
    Aggregate("SalesTaxCodeAdd", kSalesTaxCodeAdd),
};

constexpr Element kSalesTaxCodeRet[] = {
    Leaf("ListID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Text("Name", 3),
    Leaf("IsActive", Type::Bool).Opt(),
    Leaf("IsTaxable", Type::Bool),
    Text("Desc", 31).Opt(),
};

constexpr Element kSalesTaxCodeQueryResponse[] = {
    Aggregate("SalesTaxCodeRet", kSalesTaxCodeRet).Opt().Rep(),
};

constexpr Element kTaxCodeAdd[] = {
    Text("Name", 3).Since(2, 0),
    Leaf("IsActive", Type::Bool).Opt().Since(2, 0),
    Text("Desc", 31).Opt().Since(2, 0),
    Leaf("Tax1Rate", Type::Float).Opt().Since(2, 0),
    Leaf("Tax2Rate", Type::Float).Opt().Since(2, 0),
    Leaf("IsTax1Exempt", Type::Bool).Opt().Since(2, 0),
    Leaf("IsTax2Exempt", Type::Bool).Opt().Since(2, 0),
    Leaf("IsPiggybackRate", Type::Bool).Opt().Since(2, 0),
    Leaf("IsECVatCode", Type::Bool).Opt().Since(2, 0),
};

constexpr Element kTaxCodeAddRequest[] = {
    Aggregate("TaxCodeAdd", kTaxCodeAdd),
};

constexpr Element kTaxCodeRet[] = {
    Leaf("ListID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Text("Name", 3).Since(2, 0),
    Leaf("IsActive", Type::Bool).Opt().Since(2, 0),
    Text("Desc", 31).Opt().Since(2, 0),
    Leaf("Tax1Rate", Type::Float).Opt().Since(2, 0),
    Leaf("Tax2Rate", Type::Float).Opt().Since(2, 0),
    Leaf("IsTax1Exempt", Type::Bool).Opt().Since(2, 0),
    Leaf("IsTax2Exempt", Type::Bool).Opt().Since(2, 0),
    Leaf("IsPiggybackRate", Type::Bool).Opt().Since(2, 0),
    Leaf("IsECVatCode", Type::Bool).Opt().Since(2, 0),
};

constexpr Element kTaxCodeQueryResponse[] = {
    Aggregate("TaxCodeRet", kTaxCodeRet).Opt().Rep(),
};

constexpr Element kOneClass[] = {Aggregate("ClassRet", kClassRet).Opt()};
constexpr Element kOneJobType[] = {Aggregate("JobTypeRet", kClassRet).Opt()};
constexpr Element kOnePaymentMethod[] = {Aggregate("PaymentMethodRet", kPaymentMethodRet).Opt()};
constexpr Element kOneSalesTaxCode[] = {Aggregate("SalesTaxCodeRet", kSalesTaxCodeRet).Opt()};
constexpr Element kOneTaxCode[] = {Aggregate("TaxCodeRet", kTaxCodeRet).Opt()};

constexpr Message kMessages[] = {
    {.name = "ClassAdd", .request = kClassAddRequest, .response = kOneClass},
    {.name = "ClassQuery", .request = kListQuery, .response = kClassQueryResponse},
    {.name = "JobTypeAdd", .request = kJobTypeAddRequest, .response = kOneJobType},
    {.name = "JobTypeQuery", .request = kListQuery, .response = kJobTypeQueryResponse},
    {.name = "PaymentMethodAdd", .request = kPaymentMethodAddRequest, .response = kOnePaymentMethod},
    {.name = "PaymentMethodQuery", .request = kListQuery, .response = kPaymentMethodQueryResponse},
    {.name = "SalesTaxCodeAdd",
     .request = kSalesTaxCodeAddRequest,
     .response = kOneSalesTaxCode,
     .countries = kUnitedStates},
    {.name = "SalesTaxCodeQuery",
     .request = kListQuery,
     .response = kSalesTaxCodeQueryResponse,
     .countries = kUnitedStates},
    {.name = "TaxCodeAdd", .request = kTaxCodeAddRequest, .response = kOneTaxCode, .countries = kCanada | kBritain},
    {.name = "TaxCodeQuery", .request = kListQuery, .response = kTaxCodeQueryResponse, .countries = kCanada | kBritain},
};

}  // namespace

std::span<const Message> PlainListMessages() { return kMessages; }

}  // namespace twqb::messages
