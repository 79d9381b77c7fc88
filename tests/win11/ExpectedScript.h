#pragma once

// The script that the list program must receive, on one line.
// clang-format off
constexpr char kExpectedScript[] =
    "\n\t\t\tfunction doGet(){\n\t\t\t\tvar ret = [];\n\t\t\t\tvar nodes = document.querySelectorAll('table');\n\t\t\t\tfor(var idx = 0;idx<nodes.length;idx++){\n\t\t\t\t\tvar tbody = nodes[0].getElementsByTagName('tbody')[0];\n\t\t\t\t\tvar rows = tbody.getElementsByTagName('tr');\n\t\t\t\t\tvar textRows = Array.from(rows).map(row => Array.from(row.getElementsByTagName('td')).map(td => td.textContent));\n\t\t\t\t\tvar org = ret;\n\t\t\t\t\tret = org.concat(textRows);\n\t\t\t\t}return ret;\n\t\t\t\t}\n\t\tdoGet()";
// clang-format on
