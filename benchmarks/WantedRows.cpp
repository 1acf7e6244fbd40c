#include "WantedRows.h"

#include <regex>

namespace benchmarks {

std::vector<Row> wantedRows(const std::vector<Rows>& parts, const std::string& expression) {
    const std::regex wanted(expression);
    std::vector<Row> rows;
    for (const Rows& part : parts) {
        for (std::size_t i = 0; i < part.count; ++i) {
            if (std::regex_search(part.first[i].work.name, wanted)) {
                rows.push_back(part.first[i]);
            }
        }
    }
    return rows;
}

} // namespace benchmarks
