// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>
#include <vector>

namespace quelto::test {

/// The fault of a write that succeeds with a part of its bytes.
constexpr int ShortWrite = -1;
/// The fault of a call that succeeds 20 ms later, as on a slow disk.
constexpr int SlowCall = -2;

/// Decides which file calls fail.
///
/// The rules are a text. Its first line is a number that differs from text to text, its second line the folder whose
/// files are watched. Every further line is "CALL NUMBER FAULT PATTERN": the NUMBERth call of that name, counted from 1
/// since these rules were first used, or every call for 0, gets the FAULT, an error code, ShortWrite or SlowCall,
/// if the file's name matches the shell PATTERN.
class FileFaultRules {
public:
    struct Decision {
        /// An error code, ShortWrite, SlowCall, or 0 for none.
        int fault = 0;
        /// "CALL NUMBER FAULT PATH", with the path inside the folder; empty for a file that is not watched.
        std::string record;
    };

    /// Counting starts again if the text differs from the previous one.
    void use(const std::string& text);
    Decision decide(const std::string& call, const std::string& path);

private:
    struct Rule {
        std::string call;
        int number = 0;
        int fault = 0;
        std::string pattern;
    };

    std::string m_text;
    std::string m_folder;
    std::vector<Rule> m_rules;
    std::map<std::string, int> m_counts;
};

} // namespace quelto::test
