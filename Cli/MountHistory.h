#pragma once

#include "Cli/OriginRecord.h"
#include "Cli/Output.h"
#include "Cli/SourceLines.h"
#include "ProfileStore/PassiveMountGroup.h"

namespace Corvid::Cli {

/// Tells people which lines made a mount what it is: a line for each, with its place, what it did, and its
/// text.
class MountHistory {
  public:
    /// @param record of the run that made the mounts. All outlive this object.
    MountHistory( Output& out, const OriginRecord& record ) : out_( out ), record_( record ) {}

    /// @param mount is one of the group.
    void write( const PassiveMountGroup& group, const Mount& mount );

  private:
    void headline( const PassiveMountGroup& group, const Mount& mount );
    void steps( const std::vector<OriginRecord::MountStep>& steps );
    void filter( const std::string& name );
    void group( const OriginRecord::Group& group );
    void condition( const OriginRecord::Group& group );

    /// One line's doing, the text of that line, and how its file came to be read.
    void tell( const OriginRecord::Place& place, std::string_view doing );

    Output& out_;
    const OriginRecord& record_;
    SourceLines sources_;
};

} // namespace Corvid::Cli
