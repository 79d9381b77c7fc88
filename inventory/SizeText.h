#pragma once

#include <QtCore/QString>

#include <string>

/// A byte count as text for display. The units KB, MB, GB and TB are powers of 1024. @p precision is the
/// number of decimals; sizes in MB have decimals only with @p showMegabyteDecimals. A value of 0 or less
/// gives "0 Byte".
QString formatSizeText(qint64 value, int precision, bool showMegabyteDecimals);

/// The same text as UTF-8 for the wire.
std::string sizeText(qint64 value, int precision, bool showMegabyteDecimals);
