#pragma once

#include <string>
#include <vector>

#include "base/check_code.h"
#include "platform/endpoint.h"

namespace pallomir::fakes {

/// The locator's answer with these entries, of twelve characters each.
inline Bytes LocatorAnswer(const std::string& entries) {
  Bytes answer = ShortCheckForm(AsBytes(entries));
  Append(answer, AsBytes(entries));
  return answer;
}

/// Records what the client does with an endpoint; the test plays the other side through the callbacks.
template <class Base>
class FakeEndpointBase : public Base {
 public:
  void Connect(const std::string& host, int port) override {
    connections.push_back(host + ":" + std::to_string(port));
    closed = false;
  }
  void Send(ByteView bytes) override { sent.emplace_back(AsText(bytes)); }
  void Close() override { closed = true; }
  bool IsClosed() const override { return closed; }

  std::vector<std::string> connections;
  std::vector<std::string> sent;
  bool closed = true;
};

using FakeDatagramEndpoint = FakeEndpointBase<DatagramEndpoint>;

class FakeStreamEndpoint : public FakeEndpointBase<StreamEndpoint> {
 public:
  void SetReading(bool on) override { reading = on; }
  bool reading = true;
};

}  // namespace pallomir::fakes
