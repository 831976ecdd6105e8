#include "model/ModelGrammar.h"

#include <cctype>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace Model {

namespace {

/// One production a line, in the order of the rules.
constexpr const char* productions = R"(
profile NEWLN* ( includeFile | agentFile )
agentFile agent EOF
includeFile mountEntry+ EOF
agent AGENTNAME COLON agentId templateKeys? NEWLN+ statements
agentId ( ident | INT | HYPHEN )* ( ident | INT )
templateKeys ( HYPHEN templateKey )+ DOLLAR?
templateKey PERCENTAGE ident
ident keyword | LIDENT | UIDENT
keyword AGENTNAME | ALIAS | CONDITION | CONDITIONBLOCKER | INCLUDE | MOUNTFILTER | MOUNTGROUP | ROOTFLAGS | SUBAGENT
attrIdent keyword | LIDENT
typeIdent keyword | UIDENT
statements ( mountFilter | property | subAgent | alias | rootFlags )* ( include | mountEntry )* ( mountFilter | mountGroup )*
mountFilter MOUNTFILTER COLON mountFilterId NEWLN+ mountFilterBody
mountFilterId ( HYPHEN | ident | INT )+
mountFilterBody mountFilterAttrSpec*
mountFilterAttrSpec attrIdent ( COMMA ( STRING+ | mountFilterKey ) )? NEWLN+
mountFilterKey ( ident | HYPHEN | INT )+
property ( LOWMOUNTPRIO | NODEFAULTMOUNTGROUP | HYBRIDMOUNT ) NEWLN+
subAgent SUBAGENT COLON agentId ( HYPHEN templateKey )* NEWLN+
alias ALIAS COLON templateKey EQUAL templateKey ( COMMA templateKey )* NEWLN+
rootFlags ROOTFLAGS COLON ident NEWLN+
mountEntry ( STRING+ | path ) COMMA entityType COMMA ident ( COMMA mountFilterId )? NEWLN+
include INCLUDE COLON includeFilePattern NEWLN+
includeFilePattern ( ident | HYPHEN | INT | ASTERISK | DOT )+
path SLASH? pathUnit ( SLASH pathUnit )* SLASH? QSNMARK?
pathUnit ( INT | ident | HYPHEN | DOUBLECOLON | templateKey )+
entityType DOUBLECOLON? typeIdent ( DOUBLECOLON typeIdent )*
mountGroup MOUNTGROUP COLON mountGroupId ( COMMA INT )? NEWLN+ mountGroupBody
mountGroupId ( HYPHEN | ident | INT )+
mountGroupBody entireCondition? ( include | mountEntry )*
entireCondition ( CONDITION | CONDITIONBLOCKER ) COLON conditions NEWLN+
conditions condition ( AND condition )*
condition lvalue OP rvalue
lvalue str | number
str ( ident | templateKey ) ( ident | HYPHEN | INT | templateKey )*
number HYPHEN? ( FLOAT | HEX | INT )
condPath SLASH pathUnit ( SLASH pathUnit )*
rvalue ident OPENPAREN condPath DOT attrIdent CLOSEPAREN | templateKey | condPath DOT attrIdent
)";

/// A production, or a part of one: a name, a sequence of parts or a choice between parts.
struct Part {
    enum Kind { name, sequence, choice } kind = name;
    char repeat = '1'; ///< '1', '?', '*' or '+'
    std::string text;
    std::vector<Part> parts;
};

class ProductionReader {
  public:
    explicit ProductionReader( const std::string& line ) : words_( line ) { advance(); }

    Part read() {
        Part whole{ Part::choice, '1', {}, {} };
        whole.parts.push_back( readSequence() );
        while ( word_ == "|" ) {
            advance();
            whole.parts.push_back( readSequence() );
        }
        return whole;
    }

  private:
    Part readSequence() {
        Part out{ Part::sequence, '1', {}, {} };
        while ( !word_.empty() && word_ != "|" && word_.front() != ')' )
            out.parts.push_back( readElement() );
        return out;
    }
    Part readElement() {
        Part element;
        std::string end = word_;
        if ( word_ == "(" ) {
            advance();
            element = read();
            end = word_; // the closing parenthesis with its repetition
        }
        if ( const char last = end.back(); last == '?' || last == '*' || last == '+' ) {
            element.repeat = last;
            end.pop_back();
        }
        if ( element.kind == Part::name )
            element.text = end;
        advance();
        return element;
    }
    void advance() {
        word_.clear();
        words_ >> word_;
    }

    std::istringstream words_;
    std::string word_;
};

/// The productions, and for every place in them the set of what can follow it there.
class Grammar {
  public:
    Grammar() {
        std::istringstream lines( productions );
        for ( std::string line; std::getline( lines, line ); ) {
            if ( line.empty() )
                continue;
            const auto blank = line.find( ' ' );
            ruleNames_.push_back( line.substr( 0, blank ) );
            bodies_[ruleNames_.back()] = ProductionReader( line.substr( blank + 1 ) ).read();
        }
        for ( std::uint32_t type = 4; type < typeCount; ++type )
            types_[typeName( static_cast<Type>( type ) )] = type;
        TypeSet ends;
        ends.set( endOfRule );
        for ( const auto& [rule, body] : bodies_ )
            mark( rule, body, ends );
    }

    [[nodiscard]] const TypeSet& follow( Rule rule, const std::string& name, unsigned occurrence ) const {
        return follows_.at( ruleName( rule ) ).at( name ).at( occurrence );
    }
    [[nodiscard]] const std::string& ruleName( Rule rule ) const {
        return ruleNames_.at( static_cast<std::size_t>( rule ) );
    }

  private:
    /// What a part can begin with; holds the end-of-rule mark when it can be empty.
    [[nodiscard]] TypeSet first( const Part& part ) const {
        TypeSet out;
        if ( part.kind == Part::name )
            out = firstOfName( part.text );
        else if ( part.kind == Part::choice )
            for ( const Part& alternative : part.parts )
                out |= first( alternative );
        else
            out = firstOfSequence( part.parts, 0, TypeSet().set( endOfRule ) );
        if ( part.repeat == '?' || part.repeat == '*' )
            out.set( endOfRule );
        return out;
    }
    [[nodiscard]] TypeSet firstOfName( const std::string& name ) const {
        if ( const auto body = bodies_.find( name ); body != bodies_.end() )
            return first( body->second );
        TypeSet out;
        if ( name != "EOF" )
            out.set( types_.at( name ) );
        return out;
    }
    /// What the parts from an index on, and then `after`, can begin with.
    [[nodiscard]] TypeSet firstOfSequence( const std::vector<Part>& parts, std::size_t from,
                                           const TypeSet& after ) const {
        TypeSet out;
        for ( std::size_t index = from; index < parts.size(); ++index ) {
            const TypeSet begins = first( parts[index] );
            out |= begins;
            if ( !begins.test( endOfRule ) )
                return out;
            out.reset( endOfRule );
        }
        return out | after;
    }

    void mark( const std::string& rule, const Part& part, TypeSet after ) {
        if ( part.repeat == '*' || part.repeat == '+' ) {
            TypeSet again = first( part );
            again.reset( endOfRule );
            after |= again;
        }
        if ( part.kind == Part::name )
            follows_[rule][part.text].push_back( after );
        for ( std::size_t index = 0; index < part.parts.size(); ++index )
            mark( rule, part.parts[index],
                  part.kind == Part::choice ? after : firstOfSequence( part.parts, index + 1, after ) );
    }

    std::vector<std::string> ruleNames_;
    std::map<std::string, Part> bodies_;
    std::map<std::string, std::uint32_t> types_;
    std::map<std::string, std::map<std::string, std::vector<TypeSet>>> follows_;
};

const Grammar& grammar() {
    static const Grammar only;
    return only;
}

} // namespace

const TypeSet& follow( Rule rule, Type token, unsigned occurrence ) {
    return grammar().follow( rule, token == END ? "EOF" : typeName( token ), occurrence );
}

const TypeSet& follow( Rule rule, Rule called, unsigned occurrence ) {
    return grammar().follow( rule, grammar().ruleName( called ), occurrence );
}

} // namespace Model
