#pragma once

#include <QtCore/QString>

#include <string>

/// The content of a registry string: @p data without its terminating zero. Only one zero is removed: a string
/// with an earlier zero does not compare equal to the string without it.
QString registryText(const std::wstring& data);
