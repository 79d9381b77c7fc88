#pragma once

#include "tests/tools/ToolRow.h"

/// One tool against a host that lacks something, or says no.
struct LackRow
{
    std::string method;
    /// What is amiss, parts joined by " & ": "bridge" or "engine" is null, "-object" or "-object.member" is
    /// missing, "no object.member" and "yes object.member" is what that member answers.
    QString lack;
    QString answer;
    /// "object.member" of each call, in order.
    QStringList calls;
};

std::vector<LackRow> allLackRows();

/// Brings the bench's host into the state that @p lack tells, and builds it.
void buildLacking(ToolBench& bench, const QString& lack);

void PrintTo(const LackRow& row, std::ostream* out);
