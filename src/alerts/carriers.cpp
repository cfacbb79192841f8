#include "alerts/carriers.h"

namespace pallomir {
namespace {

constexpr Carrier kCarriers[] = {
    {'1', "Verizon", "vtext.com"},
    {'2', "Cingular", "cingularme.com"},
    {'3', "AT&T", "txt.att.net"},
    {'4', "Nextel", "messaging.nextel.com"},
    {'5', "Sprint", "messaging.sprintpcs.com"},
    {'6', "Midwest Wireless", "clearlydigital.com"},
    {'7', "Clearly Digital", "clearlydigital.com"},
    {'8', "T-Mobile", "tmomail.net"},
    {'9', "Virgin Mobile", "vmobl.com"},
    {'A', "Alltel", "message.alltel.com"},
    {'B', "Boost", "myboostmobile.com"},
    {'C', "Cricket Wireless", "sms.mycricket.com"},
    {'D', "Centennial Wireless", "cwemail.com"},
    {'E', "Cellular South", "csouth1.com"},
    {'F', "Cincinnati Bell", "gocbw.com"},
    {'G', "Metro PCS", "mymetropcs.com"},
    {'H', "Qwest", "qwestmp.com"},
    {'J', "Rogers", "pcs.rogers.com"},
    {'K', "Suncom", "tms.suncom.com"},
    {'L', "Telus", "msg.telus.com"},
    {'M', "US Cellular", "email.uscc.net"},
};

}  // namespace

std::span<const Carrier> Carriers() { return kCarriers; }

}  // namespace pallomir
