#pragma once

#include <cctype>
#include <string>
#include <vector>

namespace CorvidTest {

/// A word of lower-case letters as it is, in upper case, and with every other letter in upper case.
inline std::vector<std::string> inAllCases( const std::string& word ) {
    std::string upper( word );
    std::string evenUpper( word );
    std::string oddUpper( word );
    for ( std::size_t i = 0; i < word.size(); ++i ) {
        upper[i] = static_cast<char>( std::toupper( word[i] ) );
        ( i % 2 ? oddUpper : evenUpper )[i] = upper[i];
    }
    return { word, upper, evenUpper, oddUpper };
}

} // namespace CorvidTest
