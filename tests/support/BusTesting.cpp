#include "tests/support/BusTesting.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>

#include "device/bus/BusProtocol.h"

namespace sentrel::bus {
namespace {

class Watch final : public loop::RunLoop::Source {
 public:
  Watch(loop::RunLoop& loop, std::function<bool()> condition)
      : loop_(loop), condition_(std::move(condition)) {}

  Wish prepare() override {
    holds = condition_();
    if (holds) loop_.stop();
    Wish wish;
    wish.timeout = deadline_ - std::chrono::steady_clock::now();
    return wish;
  }

  void dispatch() override { loop_.stop(); }

  bool holds = false;

 private:
  loop::RunLoop& loop_;
  std::function<bool()> condition_;
  std::chrono::steady_clock::time_point deadline_ = std::chrono::steady_clock::now() + patience;
};

std::string readAll(int descriptor) {
  std::string text;
  std::array<char, 256> buffer;
  ssize_t count = 0;
  while ((count = read(descriptor, buffer.data(), buffer.size())) > 0)
    text.append(buffer.data(), static_cast<std::size_t>(count));
  return text;
}

/// What the bus itself answers about a name; empty where it answers an error.
std::string askAboutName(sd_bus* bus, const char* question, const std::string& name) {
  sd_bus_message* reply = nullptr;
  const char* answer = nullptr;
  int isOwned = 0;
  if (sd_bus_call_method(bus, "org.freedesktop.DBus", "/", "org.freedesktop.DBus", question,
                         nullptr, &reply, "s", name.c_str()) < 0)
    return {};
  if (sd_bus_message_read(reply, "s", &answer) < 0 && sd_bus_message_read(reply, "b", &isOwned) > 0)
    answer = isOwned ? "yes" : "";
  const std::string text = answer ? answer : "";
  sd_bus_message_unref(reply);
  return text;
}

void serveRaw(sd_bus* bus) {
  int processed = 0;
  while ((processed = sd_bus_process(bus, nullptr)) >= 0)
    if (processed == 0) sd_bus_wait(bus, UINT64_MAX);
}

}  // namespace

bool runUntil(loop::RunLoop& loop, std::function<bool()> condition) {
  const auto watch = std::make_shared<Watch>(loop, std::move(condition));
  loop.add(watch);
  loop.run();
  return watch->holds;
}

ChildProcess::ChildProcess(const std::function<void(const Ready& ready)>& body) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  process_ = fork();
  if (process_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    close(ends[0]);
    try {
      body([&ends](const std::string& text) {
        if (write(ends[1], text.data(), text.size()) < 0) _exit(1);
        close(std::exchange(ends[1], -1));
      });
    } catch (const std::exception& error) {
      fprintf(stderr, "child: %s\n", error.what());
    }
    _exit(0);
  }
  close(ends[1]);
  said_ = readAll(ends[0]);
  close(ends[0]);
}

void ChildProcess::end() {
  if (process_ <= 0) return;
  kill(process_, SIGKILL);
  waitpid(std::exchange(process_, -1), nullptr, 0);
}

Server::Server(const std::string& address, const std::function<void(BusConnection&)>& serve)
    : ChildProcess([&](const Ready& ready) {
        const auto loop = std::make_shared<loop::RunLoop>();
        BusConnection::Options options;
        options.address = address;
        BusConnection connection(loop, std::move(options));
        serve(connection);
        ready("ready");
        loop->run();
      }) {}

Responder::Responder(const std::string& address, const Answer& answer)
    : Server(address,
             [&](BusConnection& connection) {
               connection.serve(springBoardService, testChannel,
                                [&](const std::string& message, const UserInfo& userInfo) {
                                  return answer(connection, message, userInfo);
                                });
             }),
      tenant_(address, springBoardService) {}

Tenant::Tenant(std::string address, const std::string& service) : address_(std::move(address)) {
  name_ = askAboutName(RawBus(address_).get(), "GetNameOwner", service);
}

Tenant::~Tenant() {
  if (name_.empty()) return;
  try {
    const RawBus bus(address_);
    sd_bus_match_signal(bus.get(), nullptr, "org.freedesktop.DBus", nullptr, nullptr,
                        "NameOwnerChanged", nullptr, nullptr);
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!askAboutName(bus.get(), "NameHasOwner", name_).empty() &&
           std::chrono::steady_clock::now() < end)
      if (sd_bus_process(bus.get(), nullptr) == 0) sd_bus_wait(bus.get(), UINT64_MAX);
  } catch (const std::exception&) {
    // The bus is gone, and with it everybody on it.
  }
}

RawBus::RawBus(const std::string& address) {
  if (sd_bus_new(&bus_) < 0 || sd_bus_set_address(bus_, address.c_str()) < 0 ||
      sd_bus_set_bus_client(bus_, 1) < 0 || sd_bus_start(bus_) < 0)
    throw std::runtime_error("no bus at " + address);
}

RawResponder::RawResponder(const std::string& address, const React& react,
                           const std::string& service)
    : ChildProcess([&](const Ready& ready) {
        const RawBus bus(address);
        sd_bus_add_filter(
            bus.get(), nullptr,
            [](sd_bus_message* message, void* context, sd_bus_error*) {
              if (!sd_bus_message_is_method_call(message, nullptr, protocol::askMethod)) return 0;
              (*static_cast<const React*>(context))(message);
              return 1;
            },
            const_cast<React*>(&react));
        if (sd_bus_request_name(bus.get(), service.c_str(), 0) < 0) return;
        ready("ready");
        serveRaw(bus.get());
      }),
      tenant_(address, service) {}

RawResponder::React replyWith(std::function<void(sd_bus_message*)> fill) {
  return [fill = std::move(fill)](sd_bus_message* question) {
    sd_bus_message* reply = nullptr;
    sd_bus_message_new_method_return(question, &reply);
    fill(reply);
    sd_bus_send(nullptr, reply, nullptr);
    sd_bus_message_unref(reply);
  };
}

}  // namespace sentrel::bus
