#!/usr/bin/env python3
"""mark_alternatives.py PARSER OUTPUT: a copy of the generated parser that tells which way it goes.

Every decision calls `alternativeTaken( decision, alternative )`, where the end of a loop and the absence of something
optional are alternatives, too; so does every rule, as a decision with one alternative. A set of tokens calls
`setTokenTaken( set, type )`. Tables of all of them follow at the end.
"""
import re
import sys


def marked(text):
    decisions, sets = [], []
    rules = [(found.start(), found.group(1)) for found in re.finditer(r"\$ANTLR start (\w+)", text)]

    def rule_at(place):
        return [name for start, name in rules if start <= place][-1]

    def mark_decision(found):
        number = found.group(1)
        count = re.findall(rf"\balt{number}=(\d+);", text)[0]  # first set to the last alternative
        decisions.append((rule_at(found.start()), f"decision {number}", count))
        return f"alternativeTaken( {len(decisions) - 1}, alt{number} ); {found.group()}"

    def mark_set(found):
        condition = found.group(1).replace("LA(1)", "type")
        sets.append((rule_at(found.start()), condition))
        return found.group().replace("CONSUME()", f"setTokenTaken( {len(sets) - 1}, LA(1) ); CONSUME()")

    def mark_rule(found):
        decisions.append((rule_at(found.start()), "the rule", "1"))
        return f"{found.group()} alternativeTaken( {len(decisions) - 1}, 1 );"

    # The longest first: the places of the rules are those of the text as it was generated.
    pieces = re.compile(r"(?P<decision>switch \(alt(\d+)\))|(?P<set>if \( ([^{};]*?) \)\s*\{\s*CONSUME\(\);)|"
                        r"(?P<rule>/\* Initialize rule variables\s*\*/)")

    def mark(found):
        if found.group("decision"):
            return mark_decision(Shifted(found, 2))
        if found.group("set"):
            return mark_set(Shifted(found, 4))
        return mark_rule(found)

    text_with_marks = pieces.sub(mark, text)
    if not decisions or not sets or len({rule for rule, what, _ in decisions if what == "the rule"}) != len(rules):
        sys.exit("the generated parser does not look as expected: adapt this script")
    tables = ["const GrammarDecision grammarDecisions[] = {"]
    tables += [f'    {{ "{rule}", "{what}", {count} }},' for rule, what, count in decisions] + ["    { nullptr, nullptr, 0 } };"]
    tables += ["const GrammarSet grammarSets[] = {"]
    tables += [f'    {{ "{rule}", []( unsigned type ) -> bool {{ return {condition}; }} }},' for rule, condition in sets]
    tables += ["    { nullptr, nullptr } };"]
    return '#include "unit/Grammar/GrammarMarks.h"\n' + text_with_marks + "\n" + "\n".join(tables) + "\n"


class Shifted:
    """A match whose group 1 is another one's group."""

    def __init__(self, found, group):
        self.found, self.shift = found, group

    def group(self, number=0):
        return self.found.group(self.shift if number == 1 else number)

    def start(self):
        return self.found.start()


def main(parser, output):
    with open(parser, encoding="latin-1") as file:
        text = file.read()
    with open(output, "w", encoding="latin-1") as file:
        file.write(marked(text))


if __name__ == "__main__":
    main(*sys.argv[1:])
