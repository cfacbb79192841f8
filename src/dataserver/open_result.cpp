#include "dataserver/open_result.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace pallomir {
namespace {

constexpr int kUndefined = 1;

struct ErrorCode {
  int error;
  int code;
};
constexpr ErrorCode kCodes[] = {{ENOENT, 2}, {ENOTDIR, 3},  {EACCES, 5}, {ENOEXEC, 11},
                                {ENOMEM, 8}, {ETXTBSY, 26}, {EAGAIN, 0}};

struct CodeMessage {
  int code;
  std::string_view message;
};
constexpr CodeMessage kMessages[] = {
    {0, "The operating system is out of memory or resources."},
    {2, "The specified file was not found."},
    {3, "The specified path was not found."},
    {11, "The .exe file is invalid (non-Win32\u00AE .exe or error in .exe image)."},
    {5, "The operating system denied access to the specified file."},
    {27, "The file name association is incomplete or invalid."},
    {30, "The DDE transaction could not be completed because other DDE transactions were being processed."},
    {29, "The DDE transaction failed."},
    {28, "The DDE transaction could not be completed because the request timed out."},
    {32, "The specified dynamic-link library was not found."},
    {31, "There is no application associated with the given file name extension."},
    {8, "There was not enough memory to complete the operation."},
    {26, "A sharing violation occurred."},
};

}  // namespace

int OpenResultOf(int error) {
  const auto* found = std::find_if(std::begin(kCodes), std::end(kCodes),
                                   [&](const ErrorCode& row) { return row.error == error; });
  return found == std::end(kCodes) ? kUndefined : found->code;
}

std::string_view OpenErrorMessage(int code) {
  const auto* found = std::find_if(std::begin(kMessages), std::end(kMessages),
                                   [&](const CodeMessage& row) { return row.code == code; });
  return found == std::end(kMessages) ? "An undefined error occurred." : found->message;
}

}  // namespace pallomir
