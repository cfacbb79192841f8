#pragma once

#include <string>
#include <vector>

#include "platform/endpoint.h"

namespace pallomir::fakes {

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
