// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/base/faults/FileFaultRules.h"

#include <algorithm>
#include <sstream>

#include <fnmatch.h>

namespace quelto::test {

void FileFaultRules::use(const std::string& text)
{
    if (text == m_text) {
        return;
    }
    m_text = text;
    m_rules.clear();
    m_counts.clear();
    std::istringstream lines(text);
    std::string line;
    std::getline(lines, line);
    std::getline(lines, m_folder);
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        Rule rule;
        words >> rule.call >> rule.number >> rule.fault >> std::ws;
        std::getline(words, rule.pattern);
        m_rules.push_back(rule);
    }
}

FileFaultRules::Decision FileFaultRules::decide(const std::string& call, const std::string& path)
{
    if (m_folder.empty() || (path != m_folder && path.rfind(m_folder + '/', 0) != 0)) {
        return {};
    }
    const int number = ++m_counts[call];
    const auto name = path.substr(path.rfind('/') + 1);
    const auto rule = std::find_if(m_rules.begin(), m_rules.end(), [&](const Rule& each) {
        return each.call == call && (each.number == 0 || each.number == number) &&
            ::fnmatch(each.pattern.c_str(), name.c_str(), 0) == 0;
    });
    const int fault = rule == m_rules.end() ? 0 : rule->fault;
    const auto inside = path.substr(std::min(m_folder.size() + 1, path.size()));
    return {.fault = fault,
            .record = call + ' ' + std::to_string(number) + ' ' + std::to_string(fault) + ' ' + inside + '\n'};
}

} // namespace quelto::test
