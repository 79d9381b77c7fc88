#pragma once

#include <QtCore/QString>

#include <string>

/// A byte count as text for display. Units are powers of 1024 under the names KB, MB, GB, TB; @p precision is
/// the number of decimals, which the MB range leaves out unless @p showMegabyteDecimals. Not positive gives
/// "0 Byte".
QString formatSizeText(qint64 value, int precision, bool showMegabyteDecimals);

/// The same text for the wire.
std::string sizeText(qint64 value, int precision, bool showMegabyteDecimals);
