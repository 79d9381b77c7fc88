#pragma once

/// The script that gives the rows of a page's tables, unless the remote configuration has another one. It
/// reads the first table once for each table of the page.
extern const char kListScript[];
