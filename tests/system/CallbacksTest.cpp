#include <gtest/gtest.h>

#include "adapters/system/Callbacks.h"
#include "platform/PlatformError.h"

namespace twqb {
namespace {

TEST(NoCallbackFactory, Creating_the_class_that_is_not_there_raises_429) {
  NoCallbackFactory factory;
  try {
    factory.CreateCallback();
    FAIL() << "nothing was raised";
  } catch (const PlatformError& failure) {
    EXPECT_EQ(failure.number(), 429U);
    EXPECT_EQ(failure.description(), "ActiveX component can't create object");
  }
}

TEST(RecordingCallbackFactory, Modes_and_texts_of_all_objects_are_recorded_in_order) {
  RecordingCallbackFactory factory;
  const auto one = factory.CreateCallback();
  const auto two = factory.CreateCallback();
  one->SetMode(3);
  two->SetText("80000001-1204731000");
  one->SetText("");
  one->SetMode(0);
  const std::vector<CallbackEvent> expected = {3, "80000001-1204731000", "", 0};
  EXPECT_EQ(factory.Events(), expected);
  factory.Clear();
  EXPECT_TRUE(factory.Events().empty());
}

TEST(RecordingCallbackFactory, The_mode_can_be_read_back_and_begins_at_0) {
  RecordingCallbackFactory factory;
  const auto callback = factory.CreateCallback();
  EXPECT_EQ(callback->Mode(), 0);
  callback->SetMode(2);
  EXPECT_EQ(callback->Mode(), 2);
  EXPECT_EQ(factory.CreateCallback()->Mode(), 0);
}

TEST(RecordingCallbackFactory, An_object_may_outlive_its_factory) {
  std::unique_ptr<Callback> callback;
  {
    RecordingCallbackFactory factory;
    callback = factory.CreateCallback();
  }
  callback->SetMode(1);
  EXPECT_EQ(callback->Mode(), 1);
}

}  // namespace
}  // namespace twqb
