#include "model/Generator.h"

#include <cctype>

namespace Model {

namespace {

bool isWordPart( char c ) {
    return std::isalnum( static_cast<unsigned char>( c ) ) != 0 || c == '_';
}

} // namespace

Case Generator::generate() {
    Case out;
    slipPercent_ = random_.chance( 50 ) ? 0 : 4;
    oddityPercent_ = random_.chance( 60 ) ? 0 : 15;
    stage( out );
    agentFile( out );
    includeFiles( out );
    return out;
}

void Generator::agentFile( Case& out ) {
    std::string& text = out.agentText;
    while ( random_.chance( 15 ) )
        text += lineEnd();
    text += slips() ? mount() : title();
    for ( auto count = random_.below( 5 ); count > 0; --count )
        text += statement();
    text += mountLines();
    for ( auto count = random_.below( 4 ); count > 0; --count )
        text += random_.chance( 25 ) ? mountFilter() : mountGroup();
    if ( slips() )
        text += statement();
    if ( random_.chance( 10 ) && !text.empty() )
        text.pop_back();
}

std::string Generator::title() {
    Tokens tokens{ spelled( "agentName" ), ":" };
    agentId( tokens );
    const std::size_t keys = random_.chance( 50 ) ? 0 : 1 + random_.below( 3 );
    for ( std::size_t count = 0; count < keys; ++count ) {
        tokens.emplace_back( "-" );
        templateKey( tokens, true );
    }
    if ( ( keys > 0 && random_.chance( 25 ) ) || slips() )
        tokens.emplace_back( "$" );
    return line( tokens );
}

void Generator::agentId( Tokens& out ) {
    while ( random_.chance( 30 ) )
        out.push_back( random_.chance( 40 ) ? "-" : random_.chance( 60 ) ? ident() : number() );
    out.push_back( random_.chance( 85 ) ? ident() : number() );
}

std::string Generator::statement() {
    switch ( random_.below( slips() ? 8 : 5 ) ) {
    case 0:
        return mountFilter();
    case 1:
        return property();
    case 2:
        return subAgent();
    case 3:
        return alias();
    case 4:
        return rootFlags();
    case 5:
        return title();
    case 6:
        return condition();
    default:
        return line( { random_.pick( { ":", "=", "mountFilter:", "x:", "alias", "(", "*", "and" } ) } );
    }
}

std::string Generator::property() {
    Tokens tokens{ spelled( random_.pick( { "lowMountPrio", "noDefaultMountGroup", "hybridMount" } ) ) };
    if ( slips() )
        tokens.push_back( random_.pick( { ":", "x", "=" } ) );
    return line( tokens );
}

std::string Generator::subAgent() {
    Tokens tokens{ spelled( "subAgent" ), ":" };
    agentId( tokens );
    while ( random_.chance( 30 ) ) {
        tokens.emplace_back( "-" );
        templateKey( tokens );
    }
    return line( tokens );
}

std::string Generator::alias() {
    Tokens targets;
    templateKey( targets );
    while ( random_.chance( 30 ) ) {
        targets.emplace_back( "," );
        templateKey( targets );
    }
    Tokens tokens{ spelled( "alias" ), ":" };
    templateKey( tokens, true );
    tokens.emplace_back( "=" );
    tokens.insert( tokens.end(), targets.begin(), targets.end() );
    return line( tokens );
}

std::string Generator::rootFlags() {
    return line( { spelled( "rootFlags" ), ":", flags() } );
}

std::string Generator::mountFilter() {
    std::string text = line( { spelled( "mountFilter" ), ":", filterName( true ) } );
    for ( auto count = random_.below( 4 ); count > 0; --count )
        text += attrSpec();
    return text;
}

std::string Generator::attrSpec() {
    Tokens tokens{ random_.pick( { "name", "slot", "include", "x1", "Alias", "rootflags" } ) };
    if ( random_.chance( 75 ) ) {
        tokens.emplace_back( "," );
        if ( random_.chance( 30 ) )
            strings( tokens );
        else
            name( tokens );
    }
    return line( tokens );
}

std::string Generator::mountLines() {
    std::string text;
    for ( auto count = random_.below( 5 ); count > 0; --count )
        text += random_.chance( 15 ) ? include() : mount();
    return text;
}

std::string Generator::mount() {
    Tokens tokens;
    if ( random_.chance( 15 ) )
        strings( tokens );
    else
        path( tokens );
    tokens.emplace_back( slips() ? ":" : "," );
    type( tokens );
    tokens.emplace_back( "," );
    tokens.push_back( flags() );
    if ( random_.chance( filters_.empty() ? 3 : 30 ) ) {
        tokens.emplace_back( "," );
        tokens.push_back( filterName( false ) );
    }
    return line( tokens );
}

std::string Generator::mountGroup() {
    Tokens tokens{ spelled( "mountGroup" ), ":", groupName() };
    if ( random_.chance( 60 ) ) {
        tokens.emplace_back( "," );
        tokens.push_back( priority() );
    }
    std::string text = line( tokens );
    if ( random_.chance( 50 ) )
        text += condition();
    text += mountLines();
    if ( slips() )
        text += condition();
    return text;
}

std::string Generator::priority() {
    if ( slips() )
        return random_.pick(
            { "0", "100", "4294967297", "99999999999999999999", "18446744073709551617", "-1", "x" } );
    return std::to_string( 1 + random_.below( 99 ) );
}

std::string Generator::condition() {
    Tokens tokens{ spelled( random_.chance( 60 ) ? "condition" : "conditionBlocker" ), ":" };
    comparison( tokens );
    while ( random_.chance( 30 ) ) {
        tokens.emplace_back( "and" );
        comparison( tokens );
    }
    return line( tokens );
}

void Generator::comparison( Tokens& out ) {
    if ( random_.chance( 20 ) )
        templateKey( out );
    if ( random_.chance( 40 ) )
        out.push_back( ident() );
    if ( random_.chance( 30 ) )
        out.push_back( random_.pick( { "1", "-5", "0x1F", "2.50", "-0X0a", "7" } ) );
    else
        out.push_back( ident() );
    out.push_back( random_.pick( { "==", "!=", "<=", ">=", "<", ">", "in", "notin" } ) );
    const auto form = random_.below( slips() ? 4 : 3 );
    if ( form == 0 )
        return templateKey( out );
    if ( form == 1 )
        out.insert( out.end(), { slips() ? "max" : "len", "(" } );
    if ( form == 3 )
        return out.push_back( ident() );
    do {
        out.emplace_back( "/" );
        pathUnit( out );
    } while ( random_.chance( 50 ) );
    out.emplace_back( slips() ? "," : "." );
    out.push_back( slips() ? "Upper" : "count" );
    if ( form == 1 )
        out.emplace_back( slips() ? "]" : ")" );
}

void Generator::path( Tokens& out ) {
    if ( random_.chance( 60 ) )
        out.emplace_back( "/" );
    pathUnit( out );
    while ( random_.chance( 40 ) ) {
        out.emplace_back( slips() ? "//" : "/" );
        pathUnit( out );
    }
    if ( random_.chance( 15 ) )
        out.emplace_back( "/" );
    if ( random_.chance( 10 ) )
        out.emplace_back( "?" );
}

void Generator::pathUnit( Tokens& out ) {
    do {
        if ( random_.chance( 20 ) )
            templateKey( out );
        else if ( random_.chance( 20 ) )
            out.push_back( random_.pick( { "-", "::", "1", "42" } ) );
        else
            out.push_back( ident() );
    } while ( random_.chance( 15 ) );
}

void Generator::name( Tokens& out ) {
    do
        out.push_back( random_.chance( 50 ) ? ident() : random_.pick( { "-", "1", "k2", "K3" } ) );
    while ( random_.chance( 40 ) );
}

void Generator::type( Tokens& out ) {
    if ( random_.chance( 10 ) )
        out.emplace_back( "::" );
    if ( random_.chance( 60 ) )
        out.insert( out.end(), { "Kiv", "::" } );
    out.push_back( slips() ? "entity" : random_.pick( { "Entity", "Entity", "Status", "include", "T_1" } ) );
}

void Generator::strings( Tokens& out ) {
    do
        out.push_back( random_.pick(
            { "\"/a b/\"", "\"c\"", "\"\"", "\"/\"", "\"a\\\"", "\"#:\xE4\x01\"", "\"a\"", "\"\r\"" } ) );
    while ( random_.chance( 25 ) );
}

void Generator::templateKey( Tokens& out, bool declares ) {
    std::string key = random_.pick( { "slot", "chassis", "peer", "x", "Alias", "K1" } );
    if ( declares )
        templateKeys_.push_back( key );
    else if ( !slips() )
        key = random_.chance( 70 ) && !templateKeys_.empty()
                  ? templateKeys_[random_.below( templateKeys_.size() )]
                  : random_.pick(
                        { "cellId", "cellPath", "peerCellId", "peerCellPath", "sysname", "agentString" } );
    out.emplace_back( "%" );
    out.push_back( slips() ? random_.pick( { "1", "in", "-", "%x" } ) : key );
}

std::string Generator::ident() {
    return random_.pick(
        { "a",   "b",   "b",         "agent", "status",     "x_1",       "Foo", "Bar2",
          "T",   "len", "Condition", "alias", "mountGroup", "rootflags", "inx", "conditionblocker",
          "AND", "a",   "agentname", "Zz_" } );
}

std::string Generator::number() {
    return random_.pick( { "0", "1", "007", "42", "99" } );
}

std::string Generator::flags() {
    if ( slips() )
        return random_.pick( { "rwX", "x", "in", "W", "alias", "1", "r-w", "Agentname" } );
    std::string text;
    do
        text += std::string( "rwicfCDSBNO" )[random_.below( 11 )];
    while ( random_.chance( 50 ) );
    return text;
}

std::string Generator::groupName() {
    if ( slips() )
        return random_.pick( { "all", "default", "", ":", "%x" } );
    return random_.pick( { "g1", "g2", "g-3", "All", "peerReady", "10", "a b", "mountGroup" } );
}

std::string Generator::filterName( bool declares ) {
    if ( !declares && !filters_.empty() && !slips() )
        return filters_[random_.below( filters_.size() )];
    std::string filter =
        random_.pick( { "f1", "F1", "f-2", "9", "filter x", "include", "f3", "f4", "f5", "f6" } );
    if ( declares )
        filters_.push_back( filter );
    return filter;
}

std::string Generator::spelled( std::string keyword ) {
    if ( !random_.chance( oddityPercent_ ) )
        return keyword;
    for ( char& letter : keyword )
        if ( random_.chance( 40 ) )
            letter = static_cast<char>( letter ^ 0x20 );
    return keyword;
}

std::string Generator::line( const Tokens& tokens ) {
    std::string text;
    for ( const auto& token : tokens ) {
        if ( !text.empty() && !token.empty() )
            text += gap( isWordPart( text.back() ) && isWordPart( token.front() ) );
        text += token;
    }
    return text + lineEnd();
}

std::string Generator::gap( bool needed ) {
    if ( random_.chance( oddityPercent_ ) )
        return random_.pick( { "  ", "\t", "\\\n", " \\\n ", " \t ", "" } );
    return needed || random_.chance( 30 ) ? " " : "";
}

std::string Generator::lineEnd() {
    if ( random_.chance( oddityPercent_ ) )
        return random_.pick(
            { "\r\n", "\r", "\n\n", " \n", " # note\n\n", "\n# note\r\n", "\n\t\n", "\\\n\n", "#x\n" } );
    return "\n";
}

} // namespace Model
