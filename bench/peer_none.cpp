#include "bench/peer.h"

namespace bench {

bool Peer::IsHere()
{
    return false;
}

const char* Peer::Name()
{
    return "CGAL (not installed)";
}

double Peer::SecondsToBuild(const Places&)
{
    return 0.0;
}

double Peer::BuildBytes(const Places&)
{
    return 0.0;
}

double Peer::SecondsToBuildConstrained(const Places&, const std::vector<Places>&)
{
    return 0.0;
}

double Peer::SecondsToLocate(const Places&, const Places&, bool)
{
    return 0.0;
}

}   // namespace bench
