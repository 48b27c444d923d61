#include "export/date_text.h"

#include <array>
#include <cstdio>

namespace kv408 {

std::string date_text(std::chrono::system_clock::time_point time, std::chrono::minutes utc_offset) {
    using namespace std::chrono;
    const auto local = floor<milliseconds>(time + utc_offset);
    const auto day = floor<days>(local);
    const year_month_day date(day);
    const hh_mm_ss clock(local - day);
    const hh_mm_ss zone(abs(utc_offset));
    std::array<char, 64> text = {};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03d%c%02d:%02d",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
                  static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()),
                  static_cast<int>(clock.subseconds().count()), utc_offset.count() < 0 ? '-' : '+',
                  static_cast<int>(zone.hours().count()), static_cast<int>(zone.minutes().count()));
    return text.data();
}

std::chrono::minutes utc_offset(const Clock& clock) {
    using namespace std::chrono;
    using Quarters = duration<int, std::ratio<900>>; // seconds
    const LocalTime local = clock.local_time();
    const sys_days day = year(local.year) / local.month / local.day;
    const auto shown = day + hours(local.hour) + minutes(local.minute) + seconds(local.second);
    return round<Quarters>(shown - clock.time_of_day());
}

} // namespace kv408
