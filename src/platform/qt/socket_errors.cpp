#include "platform/qt/socket_errors.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace pallomir {
namespace {

struct Row {
  int systemCode;
  int number;
  const char* description;
};

constexpr int kErrorBase = 10000;

constexpr Row kRows[] = {
    {EACCES, 10013, "The system does not permit this connection"},
    {EPERM, 10013, "The system does not permit this connection"},
    {EMFILE, 10024, "Too many connections are open"},
    {ENFILE, 10024, "Too many connections are open"},
    {EMSGSIZE, 10040, "The message is too long for one datagram"},
    {EADDRINUSE, 10048, "The address is in use"},
    {EADDRNOTAVAIL, 10049, "The address or port can't be used"},
    {ENETDOWN, 10050, "The network is down"},
    {ENETUNREACH, 10051, "The network can't be reached"},
    {ECONNABORTED, 10053, "The connection was aborted"},
    {ECONNRESET, 10054, "The connection was reset by the other side"},
    {EPIPE, 10054, "The connection was reset by the other side"},
    {ENOBUFS, 10055, "There is no room for what is to be sent"},
    {ENOMEM, 10055, "There is no room for what is to be sent"},
    {ETIMEDOUT, kErrorTimedOut, "The other side did not answer in time"},
    {ECONNREFUSED, kErrorRefused, "The connection was refused"},
    {EHOSTUNREACH, 10065, "The host can't be reached"},
    {kHostNotFound, 11001, "The host was not found"},
};

}  // namespace

EndpointError ErrorOf(int systemCode) {
  const auto* row = std::find_if(std::begin(kRows), std::end(kRows),
                                 [&](const Row& candidate) { return candidate.systemCode == systemCode; });
  if (row != std::end(kRows)) return {row->number, row->description, systemCode};
  return {kErrorBase + systemCode, "The connection failed", systemCode};
}

}  // namespace pallomir
