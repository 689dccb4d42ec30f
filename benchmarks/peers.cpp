#include "peers.h"

namespace benchmarks {

std::vector<Peer> Peers() {
    return {
#ifdef BENCHMARK_SIMDJSON
        SimdjsonPeer(),
#endif
#ifdef BENCHMARK_SQLITE
        SqlitePeer(),
#endif
#ifdef BENCHMARK_NLOHMANN
        NlohmannPeer(),
#endif
#ifdef BENCHMARK_TOML
        TomlPeer(),
#endif
    };
}

} // namespace benchmarks
