#include "messages/Rows.h"
#include "messages/Tables.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr EnumValue kFileModes[] = {{"SingleUser", 0}, {"MultiUser", 1}};

constexpr Element kHostRet[] = {
    Text("ProductName", 255),
    Text("MajorVersion", 5),
    Text("MinorVersion", 5),
    Text("Country", 2).Opt().Since(3, 0),
    Text("SupportedQBXMLVersion", 10).Rep(),
    Leaf("IsAutomaticLogin", Type::Bool).Opt().Since(3, 0),
    Enumeration("QBFileMode", kFileModes).Since(3, 0),
};
constexpr Element kResponse[] = {Aggregate("HostRet", kHostRet).Opt()};

constexpr Message kMessages[] = {
    {.name = "HostQuery", .request = {}, .response = kResponse},
};

}  // namespace

std::span<const Message> HostMessages() { return kMessages; }

}  // namespace twqb::messages
