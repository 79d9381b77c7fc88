#pragma once

#include <QtCore/QString>

#include <string>

/// The text of a registry string value: @p data without its one terminating zero. A zero before that one is
/// part of the text, so that it does not compare equal to the text without it.
QString registryText(const std::wstring& data);
