#pragma once

#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <asio/buffer.hpp>
#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/ip/udp.hpp>
#include <asio/write.hpp>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "base/check_code.h"
#include "base/packed_time.h"
#include "fakes/temporary_folder.h"
#include "station/store/position_source.h"

namespace pallomir::station {

inline const Millis kNoon = ToMillis({2026, 11, 22, 12, 0, 0});

/// A record some seconds after noon whose position tells the second too.
inline WireRecord RecordAt(std::int64_t second) {
  return {EncodePackedTime(kNoon + second * kSecond).value_or(0), static_cast<std::int32_t>(second),
          static_cast<std::int32_t>(-second), static_cast<std::uint16_t>(second & 0x1FF)};
}

inline std::vector<WireRecord> RecordsAt(std::int64_t first, std::int64_t count, std::int64_t step = 1) {
  std::vector<WireRecord> records;
  for (std::int64_t i = 0; i < count; ++i) records.push_back(RecordAt(first + i * step));
  return records;
}

/// What a test puts into it, and nothing else.
class FakeSource : public PositionSource {
 public:
  std::map<std::string, std::vector<WireRecord>, std::less<>> units;

  bool Knows(std::string_view unitId) override { return units.contains(unitId); }
  std::vector<WireRecord> Read(std::string_view unitId, TimeWindow window, std::size_t limit) override {
    const auto unit = units.find(unitId);
    const auto packed = PackWindow(window);
    if (unit == units.end() || !packed) return {};
    const auto inside = RecordsInside(unit->second, *packed);
    return {inside.begin(), inside.begin() + static_cast<std::ptrdiff_t>(std::min(limit, inside.size()))};
  }
};

struct Packet {
  std::string unitId;
  std::vector<WireRecord> oldestFirst;
};

/// The whole packets at the front of `stream`, which are taken out. Bad check codes and sizes fail the test.
inline std::vector<Packet> TakePackets(std::string& stream) {
  std::vector<Packet> packets;
  while (stream.size() >= kPacketHeaderSize) {
    const std::size_t size = kPacketHeaderSize + ReadBigEndian32(AsBytes(stream), 4);
    if (size > stream.size()) break;
    const ByteView payload = AsBytes(stream).subspan(kPacketHeaderSize, size - kPacketHeaderSize);
    EXPECT_TRUE(std::ranges::equal(LongCheckForm(payload), AsBytes(stream).first(kPacketHeaderSize)));
    EXPECT_GT(payload.size(), kUnitIdSize);
    EXPECT_LE(payload.size(), kUnitIdSize + kRecordsPerPacket * kRecordSize);
    Packet packet{stream.substr(kPacketHeaderSize, kUnitIdSize), {}};
    for (std::size_t at = kUnitIdSize; at < payload.size(); at += kRecordSize)
      packet.oldestFirst.insert(packet.oldestFirst.begin(), DecodeRecord(payload, at));
    packets.push_back(std::move(packet));
    stream.erase(0, size);
  }
  return packets;
}

/// A blocking client of a port that gives up after some seconds, so that a test fails instead of hanging.
class TestClient {
 public:
  explicit TestClient(const asio::ip::tcp::endpoint& server) : TestClient(server, {}) {}

  /// A client at an address of its own.
  TestClient(const asio::ip::tcp::endpoint& server, const asio::ip::address_v4& address) : socket_(context_) {
    socket_.open(asio::ip::tcp::v4());
    socket_.bind({address, 0});
    socket_.connect(server);
    const timeval patience{20, 0};
    ::setsockopt(socket_.native_handle(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  }

  void Send(std::string_view text) {
    std::error_code ignored;
    asio::write(socket_, asio::buffer(text), ignored);
  }

  /// What arrives next; empty when the other side has closed (or said nothing for too long).
  std::string Receive() {
    std::array<char, 65536> buffer;
    const ssize_t count = ::recv(socket_.native_handle(), buffer.data(), buffer.size(), 0);
    timedOut_ = count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK);
    return count > 0 ? std::string(buffer.data(), static_cast<std::size_t>(count)) : "";
  }

  /// Everything until the other side closes.
  std::string ReceiveAll() {
    std::string all;
    for (std::string part = Receive(); !part.empty(); part = Receive()) all += part;
    return all;
  }

  bool TimedOut() const { return timedOut_; }

  void Close() { socket_.close(); }

 private:
  asio::io_context context_;
  asio::ip::tcp::socket socket_;
  bool timedOut_ = false;
};

/// While it lives, the system has so many descriptors left for this process and no more.
class NoDescriptors {
 public:
  explicit NoDescriptors(int left = 0) {
    ::getrlimit(RLIMIT_NOFILE, &before_);
    const int next = ::dup(STDIN_FILENO);
    ::close(next);
    const rlimit few{static_cast<rlim_t>(next + left), before_.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &few);
  }
  ~NoDescriptors() { ::setrlimit(RLIMIT_NOFILE, &before_); }
  NoDescriptors(const NoDescriptors&) = delete;
  NoDescriptors& operator=(const NoDescriptors&) = delete;

 private:
  rlimit before_{};
};

/// While it lives, the file can't be read, by root neither.
class Unreadable {
 public:
  explicit Unreadable(std::filesystem::path file) : file_(std::move(file)) {
    std::filesystem::permissions(file_, std::filesystem::perms::none);
    ::syscall(SYS_capget, &header_, before_);
    __user_cap_data_struct without[2] = {before_[0], before_[1]};
    without[0].effective &= ~(1u << CAP_DAC_OVERRIDE | 1u << CAP_DAC_READ_SEARCH);
    ::syscall(SYS_capset, &header_, without);
  }
  ~Unreadable() {
    ::syscall(SYS_capset, &header_, before_);
    std::filesystem::permissions(file_, std::filesystem::perms::owner_read);
  }
  Unreadable(const Unreadable&) = delete;
  Unreadable& operator=(const Unreadable&) = delete;

 private:
  std::filesystem::path file_;
  __user_cap_header_struct header_{_LINUX_CAPABILITY_VERSION_3, 0};
  __user_cap_data_struct before_[2] = {};
};

/// The tests' folder, with files in folders below it.
class TemporaryFolder : public fakes::TemporaryFolder {
 public:
  std::filesystem::path Write(const std::filesystem::path& name, std::string_view content) const {
    const std::filesystem::path file = Path() / name;
    std::filesystem::create_directories(file.parent_path());
    fakes::WriteFile(file, std::string(content));
    return file;
  }
};

}  // namespace pallomir::station
