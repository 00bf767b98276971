#include "wayland/TestCompositor.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "ext-data-control-v1-server.h"

namespace quillbox::test {

namespace {

template <class T>
T& Of(wl_resource* resource) {
  return *static_cast<T*>(wl_resource_get_user_data(resource));
}

void Destroy(wl_client*, wl_resource* resource) { wl_resource_destroy(resource); }

std::string FreshSocket() {
  static int number = 0;
  const std::string name = "quillbox-" + std::to_string(getpid()) + "-" + std::to_string(++number);
  return std::filesystem::temp_directory_path() / name;
}

// Works beside everything, as another program would.
Giving Beside(std::function<void(int fd)> work) {
  return [work = std::move(work)](int fd) {
    std::thread([work, fd] {
      work(fd);
      close(fd);
    }).detach();
  };
}

// An offer that a client was told of: that of the selection of that number.
struct OfferNumber {
  TestCompositor* compositor;
  int number;
};

}  // namespace

// The requests of the protocol, by object.
struct TestCompositor::Requests {
  static wl_resource* Make(wl_client* client, const wl_interface& interface, std::uint32_t id,
                           const void* requests, void* data, wl_resource_destroy_func_t gone = nullptr) {
    wl_resource* const made = wl_resource_create(client, &interface, 1, id);
    wl_resource_set_implementation(made, requests, data, gone);
    return made;
  }

  static constexpr struct ext_data_control_offer_v1_interface kOffer = {
      .receive =
          [](wl_client*, wl_resource* resource, const char* type, int fd) {
            const OfferNumber& offer = Of<OfferNumber>(resource);
            offer.compositor->Receive(offer.number, type, fd);
          },
      .destroy = Destroy,
  };
  static constexpr struct ext_data_control_source_v1_interface kSource = {
      .offer = [](wl_client*, wl_resource* source,
                  const char* type) { Of<TestCompositor>(source).sources_[source].push_back(type); },
      .destroy = Destroy,
  };
  static constexpr struct ext_data_control_device_v1_interface kDevice = {
      .set_selection =
          [](wl_client*, wl_resource* device, wl_resource* source) {
            Of<TestCompositor>(device).SetSelection({.source = source});
          },
      .destroy = Destroy,
      .set_primary_selection = [](wl_client*, wl_resource*, wl_resource*) {},
  };
  static constexpr struct ext_data_control_manager_v1_interface kManager = {
      .create_data_source =
          [](wl_client* client, wl_resource* manager, std::uint32_t id) {
            Make(client, ext_data_control_source_v1_interface, id, &kSource, &Of<TestCompositor>(manager),
                 [](wl_resource* gone) {
                   TestCompositor& self = Of<TestCompositor>(gone);
                   self.sources_.erase(gone);
                   if (self.selection_.source != gone) return;
                   self.selection_.source = nullptr;
                   self.SetSelection({});
                 });
          },
      .get_data_device =
          [](wl_client* client, wl_resource* manager, std::uint32_t id, wl_resource*) {
            TestCompositor& self = Of<TestCompositor>(manager);
            self.devices_.push_back(
                Make(client, ext_data_control_device_v1_interface, id, &kDevice, &self,
                     [](wl_resource* gone) { std::erase(Of<TestCompositor>(gone).devices_, gone); }));
            if (self.selection_.Any() || self.tellsOfNobody_) self.Send(self.devices_.back());
          },
      .destroy = Destroy,
  };

  static void BindManager(wl_client* client, void* compositor, std::uint32_t, std::uint32_t id) {
    Make(client, ext_data_control_manager_v1_interface, id, &kManager, compositor);
  }
  static void BindSeat(wl_client* client, void*, std::uint32_t, std::uint32_t id) {
    Make(client, wl_seat_interface, id, nullptr, nullptr);
  }
};

Giving Gives(std::string bytes) {
  return Beside([bytes = std::move(bytes)](int fd) {
    std::string_view rest = bytes;
    ssize_t written = 0;
    while (!rest.empty() && (written = write(fd, rest.data(), rest.size())) >= 0)
      rest.remove_prefix(static_cast<std::size_t>(written));
  });
}

Giving Trickles(std::string piece) {
  return Beside([piece = std::move(piece)](int fd) {
    while (write(fd, piece.data(), piece.size()) > 0)
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
  });
}

Giving Refuses() {
  return [](int fd) { close(fd); };
}

Giving NeverWrites() {
  return Beside([](int fd) {
    pollfd readerGone{fd, 0, 0};
    poll(&readerGone, 1, 60000);
  });
}

TestCompositor::TestCompositor(Options options)
    : socket_(options.socket.empty() ? FreshSocket() : options.socket),
      managers_(std::move(options.managers)),
      tellsOfNobody_(options.tellsOfNobody),
      display_(wl_display_create()) {
  unlink(socket_.c_str());
  // The library's own sockets lie in XDG_RUNTIME_DIR; a full path is taken as it is.
  if (wl_display_add_socket(display_, socket_.c_str()) != 0) throw std::runtime_error("no socket");
  wl_global_create(display_, &wl_seat_interface, 1, nullptr, Requests::BindSeat);
  interfaces_.resize(managers_.size(), ext_data_control_manager_v1_interface);
  for (std::size_t i = 0; i < managers_.size(); ++i) {
    interfaces_[i].name = managers_[i].c_str();
    wl_global_create(display_, &interfaces_[i], 1, this, Requests::BindManager);
  }
  // Signals of a broken pipe stay with the threads that write, and with those that they start.
  sigset_t pipe, before;
  sigemptyset(&pipe);
  sigaddset(&pipe, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &pipe, &before);
  thread_ = std::thread([this] { Run(); });
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TestCompositor::~TestCompositor() {
  ended_ = true;
  thread_.join();
  wl_display_destroy_clients(display_);
  wl_display_destroy(display_);
}

void TestCompositor::Run() {
  constexpr int kAgainMs = 10;  // for the end
  wl_event_loop* const loop = wl_display_get_event_loop(display_);
  pollfd events{wl_event_loop_get_fd(loop), POLLIN, 0};
  while (!ended_) {
    poll(&events, 1, kAgainMs);
    Do([loop] { wl_event_loop_dispatch(loop, 0); });
  }
}

void TestCompositor::Do(const std::function<void()>& work) {
  const std::lock_guard turn(turn_);
  work();
  wl_display_flush_clients(display_);
}

void TestCompositor::Own(Offer offer) {
  Do([&] { SetSelection({.offer = std::move(offer)}); });
}

void TestCompositor::SetSelection(Selection selection) {
  wl_resource* const old = std::exchange(selection_, std::move(selection)).source;
  selection_.number = ++selections_;
  if (old && old != selection_.source) ext_data_control_source_v1_send_cancelled(old);
  for (wl_resource* const device : devices_) Send(device);
}

void TestCompositor::Send(wl_resource* device) {
  if (!selection_.Any()) return ext_data_control_device_v1_send_selection(device, nullptr);
  wl_resource* const offer = Requests::Make(
      wl_resource_get_client(device), ext_data_control_offer_v1_interface, 0, &Requests::kOffer,
      new OfferNumber{this, selection_.number}, [](wl_resource* gone) { delete &Of<OfferNumber>(gone); });
  ext_data_control_device_v1_send_data_offer(device, offer);
  std::vector<std::string> types;
  if (selection_.source) types = sources_[selection_.source];
  for (const auto& [type, giving] : selection_.offer) types.push_back(type);
  for (const std::string& type : types) ext_data_control_offer_v1_send_offer(offer, type.c_str());
  ext_data_control_device_v1_send_selection(device, offer);
}

void TestCompositor::Receive(int selection, const std::string& type, int fd) {
  ++asked_;
  const auto giving = selection_.offer.find(type);
  if (selection == selection_.number && selection_.source) {
    ext_data_control_source_v1_send_send(selection_.source, type.c_str(), fd);
  } else if (selection == selection_.number && giving != selection_.offer.end()) {
    const Giving give = giving->second;  // the owner may end in it
    return give(fd);
  }
  close(fd);
}

int TestCompositor::Paste(const std::string& type) {
  int ends[2] = {-1, -1};
  Do([&] {
    if (!selection_.source) return;
    const std::vector<std::string>& types = sources_[selection_.source];
    if (std::find(types.begin(), types.end(), type) == types.end() || pipe(ends) != 0) return;
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
    ext_data_control_source_v1_send_send(selection_.source, type.c_str(), ends[1]);
    close(ends[1]);
  });
  return ends[0];
}

std::vector<std::string> TestCompositor::Offered() {
  std::vector<std::string> types;
  Do([&] {
    if (selection_.source) types = sources_[selection_.source];
  });
  return types;
}

void TestCompositor::Finish() {
  Do([&] {
    for (wl_resource* const device : devices_) ext_data_control_device_v1_send_finished(device);
  });
}

}  // namespace quillbox::test
