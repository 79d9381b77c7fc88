#pragma once

/// Default script that returns the rows of a page's tables; the remote configuration can replace it. It reads
/// the first table once for each table of the page.
extern const char kListScript[];
