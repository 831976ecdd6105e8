#include "Cli/ProgressBar.h"

namespace Corvid::Cli {

void ProgressBar::show( std::size_t done, Clock::time_point now ) {
    static constexpr std::size_t width = 40;
    if ( !enabled_ || now < nextDraw_ )
        return;
    nextDraw_ = now + std::chrono::milliseconds( 100 );
    visible_ = true;
    const std::size_t filled = total_ ? width * done / total_ : width;
    out_.append( "\r[" + std::string( filled, '#' ) + std::string( width - filled, '.' ) + "] " );
    out_.append( std::to_string( done ) + "/" + std::to_string( total_ ) + " files" );
    out_.flush();
}

void ProgressBar::erase() {
    if ( !visible_ )
        return;
    visible_ = false;
    out_.append( "\r\033[K" );
    out_.flush();
}

} // namespace Corvid::Cli
