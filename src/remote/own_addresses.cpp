#include "remote/own_addresses.h"

#include <algorithm>
#include <cstring>

#include <asio/io_context.hpp>
#include <asio/ip/host_name.hpp>
#include <asio/ip/tcp.hpp>

#ifndef _WIN32
#include <ifaddrs.h>
#endif

namespace kv408 {
namespace {

using asio::ip::address;

/// Whether the network reaches `one`, without the name of an interface behind it.
bool is_reached(const address& one) {
    return !one.is_loopback() && !one.is_multicast() && !one.is_unspecified() &&
           !(one.is_v6() && one.to_v6().is_link_local());
}

#ifdef _WIN32

std::vector<address> all_addresses() {
    asio::io_context context;
    asio::ip::tcp::resolver resolver(context);
    std::error_code unknown;
    std::vector<address> all;
    for (const auto& entry : resolver.resolve(asio::ip::host_name(unknown), "", unknown)) {
        all.push_back(entry.endpoint().address());
    }
    return all;
}

#else

std::vector<address> all_addresses() {
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) {
        return {};
    }
    std::vector<address> all;
    for (const ifaddrs* each = first; each != nullptr; each = each->ifa_next) {
        const int family = each->ifa_addr == nullptr ? AF_UNSPEC : each->ifa_addr->sa_family;
        asio::ip::tcp::endpoint end(family == AF_INET6 ? asio::ip::tcp::v6() : asio::ip::tcp::v4(),
                                    0);
        if (family == AF_INET || family == AF_INET6) {
            std::memcpy(end.data(), each->ifa_addr, end.size());
            all.push_back(end.address());
        }
    }
    freeifaddrs(first);
    return all;
}

#endif

} // namespace

std::vector<std::string> own_addresses() {
    std::vector<address> all = all_addresses();
    std::erase_if(all, [](const address& one) { return !is_reached(one); });
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    std::vector<std::string> texts;
    texts.reserve(all.size());
    for (const address& one : all) {
        texts.push_back(one.to_string());
    }
    return texts;
}

bool is_address(const std::string& text) {
    std::error_code none;
    asio::ip::make_address(text, none);
    return !none;
}

} // namespace kv408
