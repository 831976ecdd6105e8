// generate_completion SHELL FILE: writes the completion script of mountprofile for bash, zsh or fish.
#include "Cli/Program.h"
#include "packaging/completion/Scripts.h"

#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <stdexcept>

namespace Corvid::Completion {

std::string quoted( const std::string& text, const std::string& quote ) {
    std::string result = "'";
    for ( const char c : text )
        result += c == '\'' ? quote : std::string( 1, c );
    return result + "'";
}

std::string joined( const std::vector<std::string>& words, const std::string& separator ) {
    std::string result;
    for ( const std::string& word : words )
        result += ( result.empty() ? "" : separator ) + word;
    return result;
}

namespace {

void write( const std::string& shell, const std::string& fileName ) {
    static const std::map<std::string, std::string ( * )( const CommandTable& )> scripts{
        { "bash", bashScript }, { "zsh", zshScript }, { "fish", fishScript } };
    const std::string script = scripts.at( shell )( tableOf( Cli::Program().app() ) );
    std::ofstream file( fileName, std::ios::binary );
    file << script << std::flush;
    if ( !file )
        throw std::runtime_error( "cannot write " + fileName );
}

} // namespace

} // namespace Corvid::Completion

int main( int argc, char** argv ) try {
    if ( argc != 3 )
        throw std::runtime_error( "usage: generate_completion bash|zsh|fish FILE" );
    Corvid::Completion::write( argv[1], argv[2] );
    return 0;
} catch ( const std::exception& exception ) {
    std::cerr << "completion: " << exception.what() << '\n';
    return 1;
}
