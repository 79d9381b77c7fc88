#pragma once

/// True under Wine, false on a real Windows.
bool runsUnderWine();
