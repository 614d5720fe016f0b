// Selects the results of plots and writes the common head of their scripts.
#include "bench/plots/drawings.h"

#include <algorithm>

namespace bench {

std::vector<const Result*> RowsOf(const Results& results, const std::string& start) {
  std::vector<const Result*> rows;
  for (const Result& result : results) {
    if (result.name.work.starts_with(start)) rows.push_back(&result);
  }
  return rows;
}

std::vector<std::string> WorksOf(const std::vector<const Result*>& rows) {
  std::vector<std::string> works;
  for (const Result* row : rows) {
    if (std::find(works.begin(), works.end(), row->name.work) == works.end()) {
      works.push_back(row->name.work);
    }
  }
  return works;
}

std::string Preamble() {
  return "set output output\n"
         "set datafile missing '-'\n"
         "set grid y linecolor rgb '#DDDDDD'\n"
         "set border 3\n"
         "set tics nomirror\n"
         "set linetype 1 linecolor rgb '#111111'\n"  // ours
         "set linetype 2 linecolor rgb '#0072B2'\n"
         "set linetype 3 linecolor rgb '#E69F00'\n"
         "set linetype 4 linecolor rgb '#009E73'\n"
         "set linetype 5 linecolor rgb '#CC79A7'\n"
         "set linetype 6 linecolor rgb '#56B4E9'\n"
         "set linetype 7 linecolor rgb '#D55E00'\n"
         "set linetype 8 linecolor rgb '#F0E442'\n"
         "set linetype 9 linecolor rgb '#999999'\n";
}

}  // namespace bench
