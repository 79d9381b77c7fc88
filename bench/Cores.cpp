#include "bench/Cores.h"

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

// Read by the first call, because later ones would see only the core that it chose.
const std::vector<int>& coresAtStart()
{
    static const std::vector<int> cores = allowedCores();
    return cores;
}

void useCores(const std::vector<int>& cores)
{
    cpu_set_t chosen;
    CPU_ZERO(&chosen);
    for (const int core : cores)
        CPU_SET(core, &chosen);
    sched_setaffinity(0, sizeof chosen, &chosen);
}

void useCore(std::size_t index)
{
    if (index >= coresAtStart().size())
        throw std::runtime_error("this placement needs two cores");
    useCores({coresAtStart()[index]});
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

void useEveryCore()
{
    useCores(coresAtStart());
}
