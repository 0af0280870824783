#include "sentrel/platform/NotificationCenter.h"

#include "device/bus/BusNotificationCenter.h"
#include "device/loop/LocalNotificationCenter.h"
#include "device/simulated/SimulatedDevice.h"
#include "tests/support/BusTesting.h"

namespace sentrel {
namespace {

using Dictionary = PropertyList::Dictionary;
using bus::BusNotificationKind;
using Center = std::shared_ptr<NotificationCenter>;
using Seen = std::vector<std::string>;

/// The kinds of centre: does a notification carry its payload, and does it go to other processes?
/// One that does arrives on a later turn, any other at once.
struct Darwin {
  static constexpr bool carries = false, crosses = true;
  static constexpr auto simulated = &Platform::darwinCenter;
  static constexpr auto onBus = BusNotificationKind::darwin;
};
struct Distributed {
  static constexpr bool carries = true, crosses = true;
  static constexpr auto simulated = &Platform::distributedCenter;
  static constexpr auto onBus = BusNotificationKind::distributed;
};
struct Local {
  static constexpr bool carries = true, crosses = false;
  static constexpr auto simulated = &Platform::localCenter;
};

// Each implementation makes the centres of two processes.

template <class Kind>
class Simulated : public Kind {
 public:
  Center here() { return one_->process().platform().*Kind::simulated; }
  Center elsewhere() { return other_->process().platform().*Kind::simulated; }
  void runUntil(const std::function<bool()>&) { device_.time().runUntilIdle(); }

 private:
  simulated::SimulatedDevice device_;
  std::unique_ptr<simulated::SimulatedProcess> one_ = device_.launch("com.example.one");
  std::unique_ptr<simulated::SimulatedProcess> other_ = device_.launch("com.example.other");
};

template <class Kind>
class OnTheBus : public Kind, bus::PrivateBusAndLoop {
 public:
  Center here() { return one_; }
  Center elsewhere() { return other_; }
  void runUntil(const std::function<bool()>& condition) { bus::runUntil(*loop_, condition); }

 private:
  Center one_ = std::make_shared<bus::BusNotificationCenter>(connect(), Kind::onBus);
  Center other_ = std::make_shared<bus::BusNotificationCenter>(connect(), Kind::onBus);
};

class OnTheLoop : public Local {
 public:
  Center here() { return one_; }
  Center elsewhere() { return other_; }
  void runUntil(const std::function<bool()>&) {}

 private:
  Center one_ = std::make_shared<loop::LocalNotificationCenter>();
  Center other_ = std::make_shared<loop::LocalNotificationCenter>();
};

template <class Implementation>
class NotificationCenters : public ::testing::Test {
 protected:
  NotificationCenter::Observer noting(const std::string& observer) {
    return [this, observer](const Notification& notification) {
      const auto& userInfo = notification.userInfo;
      seen_.push_back(observer + notification.name + (userInfo ? describe(*userInfo) : ""));
    };
  }

  /// What has been seen once a last notification has come, too.
  Seen seenInTheEnd() {
    bool isOver = false;
    const auto end = center_->addObserver("the end", [&](const Notification&) { isOver = true; });
    center_->post({"the end", std::nullopt});
    device_.runUntil([&isOver] { return isOver; });
    EXPECT_TRUE(isOver);
    return std::exchange(seen_, {});
  }

  Implementation device_;
  Center center_ = device_.here();
  Seen seen_;
};

using Implementations =
    ::testing::Types<Simulated<Darwin>, Simulated<Distributed>, Simulated<Local>, OnTheBus<Darwin>,
                     OnTheBus<Distributed>, OnTheLoop>;
TYPED_TEST_SUITE(NotificationCenters, Implementations);

TYPED_TEST(NotificationCenters, DeliverInOrderToWhoStillObserves) {
  const auto first = this->center_->addObserver("a", this->noting("1"));
  const auto second = this->center_->addObserver("a", this->noting("2"));
  auto ended = this->center_->addObserver("a", this->noting("3"));
  const auto other = this->center_->addObserver("b", this->noting("4"));
  this->center_->post({"b", Dictionary{{"number", 1}}});
  this->center_->post({"a", Dictionary()});
  this->center_->post({"unobserved", std::nullopt});
  this->center_->post({"b", std::nullopt});
  this->center_->post({"b", std::nullopt});
  ended.reset();
  const std::size_t seenAtOnce = this->seen_.size();
  EXPECT_EQ(seenAtOnce, TypeParam::crosses ? 0u : 6u) << "the third still observed then";
  Seen seen = this->seenInTheEnd();
  std::erase(seen, "3a{}");
  EXPECT_EQ(seen, TypeParam::carries ? (Seen{"4b{number = 1}", "1a{}", "2a{}", "4b", "4b"})
                                     : (Seen{"4b", "1a", "2a", "4b", "4b"}));
}

TYPED_TEST(NotificationCenters, SkipAnObserverThatAnEarlierOneEnded) {
  Observation second;
  const auto first =
      this->center_->addObserver("a", [&second](const Notification&) { second.reset(); });
  second = this->center_->addObserver("a", this->noting("2"));
  this->center_->post({"a", std::nullopt});
  EXPECT_EQ(this->seenInTheEnd(), Seen());
}

TYPED_TEST(NotificationCenters, ReachTheProcessesOfTheirKind) {
  const auto elsewhere = this->device_.elsewhere();
  const auto there = elsewhere->addObserver("a", this->noting("there "));
  this->center_->post({"a", std::nullopt});
  if (TypeParam::crosses) this->device_.runUntil([this] { return !this->seen_.empty(); });
  EXPECT_EQ(this->seenInTheEnd(), Seen(TypeParam::crosses ? 1 : 0, "there a"));
}

TYPED_TEST(NotificationCenters, LoseWhatCannotCrossAsItIs) {
  const std::string cut("cut\0off", 7);
  const Notification odd[] = {{cut, std::nullopt}, {"a", Dictionary{{"text", "\xFF"}}}};
  const auto names = this->center_->addObserver(cut, this->noting("1"));
  const auto start = this->center_->addObserver("cut", this->noting("2"));
  const auto payloads = this->center_->addObserver("a", [this](const Notification& notification) {
    this->seen_.push_back(notification.userInfo ? "payload" : "bare");
  });
  for (const Notification& notification : odd)
    this->center_->post(notification);
  const Seen seen = this->seenInTheEnd();
  if (!TypeParam::crosses)
    EXPECT_EQ(seen, (Seen{"1" + cut, "payload"}));
  else
    EXPECT_EQ(seen, TypeParam::carries ? Seen() : Seen{"bare"});
}

}  // namespace
}  // namespace sentrel
