#include "ProfileParser/RunObserver.h"

namespace Corvid {

RunObserver::~RunObserver() = default;

void RunObserver::fileRead( std::string_view /*fileName*/, bool /*isInclude*/ ) {}
void RunObserver::includeEntered( const IncludeEntry& /*entry*/ ) {}
void RunObserver::agentStatement( AgentStatement /*statement*/, std::string_view /*text*/,
                                  const Origin& /*origin*/ ) {}
void RunObserver::mountFilterDeclared( std::string_view /*name*/, const Origin& /*origin*/ ) {}
void RunObserver::attrFilterAdded( std::string_view /*mountFilter*/, const AttrFilter& /*attrFilter*/,
                                   const Origin& /*origin*/ ) {}
void RunObserver::mountGroupOpened( const PassiveMountGroup& /*group*/, unsigned /*priority*/,
                                    const Origin& /*origin*/ ) {}
void RunObserver::conditionAdded( const PassiveMountGroup& /*group*/, ConditionPart /*part*/,
                                  std::string_view /*text*/, const Origin& /*origin*/ ) {}
void RunObserver::mountAdded( const MountAddition& /*addition*/ ) {}

} // namespace Corvid
