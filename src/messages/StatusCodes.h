// The status codes of QuickBooks' answers that this program tells apart, by name. Each number stands here alone.
//
// What is done about one is said by whoever asks: rows of a table's rules, or a read's own steps.
#pragma once

#include <cstdint>

namespace twqb::status {

inline constexpr std::int32_t kOk = 0;
inline constexpr std::int32_t kFoundNothing = 1;          // a query without a match
inline constexpr std::int32_t kIncomplete = 500;          // a query by identifiers, of which some are not there
inline constexpr std::int32_t kInvalidObjectId = 3000;    //
inline constexpr std::int32_t kTextTooLong = 3070;        //
inline constexpr std::int32_t kInvalidName = 3090;        // with a colon, for one
inline constexpr std::int32_t kNameInUse = 3100;          //
inline constexpr std::int32_t kInvalidField = 3110;       //
inline constexpr std::int32_t kObjectNotFound = 3120;     //
inline constexpr std::int32_t kInvalidReference = 3140;   // a reference to what is not there
inline constexpr std::int32_t kCannotModify = 3170;       //
inline constexpr std::int32_t kCannotSave = 3180;         // of a subscription, too, that is there already
inline constexpr std::int32_t kReferenceGone = 3240;      // a reference to what was there once
inline constexpr std::int32_t kFeatureNotEnabled = 3250;  //
inline constexpr std::int32_t kPersonalDataWithheld = 3261;
inline constexpr std::int32_t kTimeForPaychecksUnknown = 3310;

}  // namespace twqb::status
