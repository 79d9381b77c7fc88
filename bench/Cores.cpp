#include "bench/peers/Cores.h"

#include <sched.h>
#include <stdexcept>
#include <vector>

namespace {

std::vector<int> allowedCores()
{
    cpu_set_t allowed;
    sched_getaffinity(0, sizeof allowed, &allowed);
    std::vector<int> cores;
    for (int core = 0; core < CPU_SETSIZE; ++core) {
        if (CPU_ISSET(core, &allowed))
            cores.push_back(core);
    }
    return cores;
}

void useCore(std::size_t index)
{
    // Later calls would see only the core that the first one chose.
    static const std::vector<int> cores = allowedCores();
    if (index >= cores.size())
        throw std::runtime_error("this placement needs two cores");
    cpu_set_t chosen;
    CPU_ZERO(&chosen);
    CPU_SET(cores[index], &chosen);
    sched_setaffinity(0, sizeof chosen, &chosen);
}

} // namespace

void useServerCore(Placement placement)
{
    if (placement != Placement::Any)
        useCore(0);
}

void useClientCore(Placement placement)
{
    if (placement != Placement::Any)
        useCore(placement == Placement::OneCore ? 0 : 1);
}
