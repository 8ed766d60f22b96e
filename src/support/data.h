// Dates as the user's regional settings write them.
#pragma once

#include <string>

namespace support {

// An OLE Automation date (days since 30 December 1899, the fraction the time of day) in the general form:
// the short date, then the time when the time of day is not zero; the time alone when there is no date part.
// The forms are those of the machine's locale (LC_TIME). Under the C or POSIX locale (C.UTF-8 included),
// which names none that a reader would take for a regional one, they are ISO 8601: "1999-12-31 23:59:59". A
// value outside the years 100 to 9999, or not a number, prints as the plain number.
std::string DataGenerale(double dataOle);

}  // namespace support
