#pragma once

#include "host/machine/DataLoss.h"
#include "host/simulation/Simulation.h"

/// A simulation whose disks need consent, as disks of this computer do.
class AskingSimulation : public host::Simulation
{
public:
    using host::Simulation::Simulation;

    std::optional<host::Confirmation> confirmation(int function, const QVariantMap& params) const override
    {
        const auto loss = host::dataLoss(*machine(), function, params);
        if (!loss)
            return std::nullopt;
        const host::Disk* disk = machine()->disk(loss->diskIndex);
        return host::Confirmation{*loss, "/dev/sdx", model, disk == nullptr ? 0 : disk->size};
    }
    bool isReal() const override { return true; }

    QString model = "Maker Stick";
};
