// What a question over the bus costs beside the same bytes sent and answered with nothing but
// sd-bus, through the same daemon. Pin the whole program to one CPU to compare the two.

#include <benchmark/benchmark.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <string>

#include "device/bus/BusMessageChannel.h"
#include "device/bus/BusProtocol.h"
#include "device/bus/PrivateBus.h"
#include "device/loop/RunLoop.h"

namespace sentrel::bus {
namespace {

constexpr const char* rawService = "com.quorvin.sentrel.Plain";
constexpr const char* channel = "com.quorvin.sentrel";
constexpr const char* message = "com.quorvin.sentrel.app.lastUnlocked";
constexpr const char* key = "SentrelServiceMessageData";
constexpr const char* item = "com.vendor.application";

/// A process that runs `serve` until this object goes. Made once `serve` has said that it is ready.
class Server {
 public:
  explicit Server(const std::function<void(const std::function<void()>& ready)>& serve) {
    int ends[2];
    if (pipe(ends) != 0) std::abort();
    process_ = fork();
    if (process_ == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      serve([&ends] { close(ends[1]); });
      _exit(1);
    }
    close(ends[1]);
    char none = 0;
    [[maybe_unused]] const auto end = read(ends[0], &none, 1);
    close(ends[0]);
  }
  ~Server() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

 private:
  pid_t process_;
};

// --- Our side ------------------------------------------------------------------------------------

std::shared_ptr<BusConnection> connect(const std::shared_ptr<loop::RunLoop>& loop,
                                       const std::string& address) {
  BusConnection::Options options;
  options.address = address;
  return std::make_shared<BusConnection>(loop, std::move(options));
}

void serveWithOurCode(const std::string& address, const std::function<void()>& ready) {
  const auto loop = std::make_shared<loop::RunLoop>();
  const auto connection = connect(loop, address);
  connection->serve(springBoardService, channel,
                    [](const std::string&, const UserInfo& question) -> UserInfo {
                      const auto* asked = find<std::string>(*question, key);
                      return PropertyList::Dictionary{{key, asked && *asked == item}};
                    });
  ready();
  loop->run();
}

void askWithOurCode(benchmark::State& state) {
  const PrivateBus bus;
  const Server server([&](const auto& ready) { serveWithOurCode(bus.address(), ready); });
  const auto loop = std::make_shared<loop::RunLoop>();
  BusMessageChannel messages(connect(loop, bus.address()));
  for (auto _ : state) {
    const PropertyList::Dictionary question{{key, item}};
    const UserInfo answer = messages.sendMessageAndReceiveReply(channel, message, question);
    const bool* value = answer ? find<bool>(*answer, key) : nullptr;
    if (!value || !*value) return state.SkipWithError("a wrong answer");
  }
}
BENCHMARK(askWithOurCode)->Name("Bus/Question")->UseRealTime();

// --- sd-bus alone --------------------------------------------------------------------------------

sd_bus* connectPlainly(const std::string& address) {
  sd_bus* bus = nullptr;
  if (sd_bus_new(&bus) < 0 || sd_bus_set_address(bus, address.c_str()) < 0 ||
      sd_bus_set_bus_client(bus, 1) < 0 || sd_bus_start(bus) < 0)
    std::abort();
  return bus;
}

int answerPlainly(sd_bus_message* question, void*, sd_bus_error*) {
  const char* texts[4] = {};
  if (sd_bus_message_read(question, "ssaa{sv}", &texts[0], &texts[1], 1, 1, &texts[2], "s",
                          &texts[3]) < 0)
    return -1;
  const int isItem = std::string_view(texts[3]) == item;
  return sd_bus_reply_method_return(question, "aa{sv}", 1, 1, key, "b", isItem);
}

void servePlainly(const std::string& address, const std::function<void()>& ready) {
  static const sd_bus_vtable methods[] = {
      SD_BUS_VTABLE_START(0),
      SD_BUS_METHOD("Ask", "ssaa{sv}", "aa{sv}", answerPlainly, SD_BUS_VTABLE_UNPRIVILEGED),
      SD_BUS_VTABLE_END,
  };
  sd_bus* bus = connectPlainly(address);
  sd_bus_add_object_vtable(bus, nullptr, protocol::objectPath, protocol::messagesInterface, methods,
                           nullptr);
  if (sd_bus_request_name(bus, rawService, 0) < 0) std::abort();
  ready();
  int processed = 0;
  while ((processed = sd_bus_process(bus, nullptr)) >= 0)
    if (processed == 0) sd_bus_wait(bus, UINT64_MAX);
}

bool askPlainly(sd_bus* bus) {
  sd_bus_message* answer = nullptr;
  const char* answeredKey = nullptr;
  int value = 0;
  sd_bus_call_method(bus, rawService, protocol::objectPath, protocol::messagesInterface,
                     protocol::askMethod, nullptr, &answer, "ssaa{sv}", channel, message, 1, 1, key,
                     "s", item);
  const int read =
      answer ? sd_bus_message_read(answer, "aa{sv}", 1, 1, &answeredKey, "b", &value) : -1;
  sd_bus_message_unref(answer);
  return read > 0 && value;
}

void askWithSdBusAlone(benchmark::State& state) {
  const PrivateBus privateBus;
  const Server server([&](const auto& ready) { servePlainly(privateBus.address(), ready); });
  sd_bus* bus = connectPlainly(privateBus.address());
  for (auto _ : state) {
    if (askPlainly(bus)) continue;
    state.SkipWithError("a wrong answer");
    break;
  }
  sd_bus_flush_close_unref(bus);
}
BENCHMARK(askWithSdBusAlone)->Name("Bus/SameBytesBySdBusAlone")->UseRealTime();

}  // namespace
}  // namespace sentrel::bus
