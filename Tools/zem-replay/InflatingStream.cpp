#include "InflatingStream.h"

#include "Trace.h"

#include "Util_Assert.h"

#include <cerrno>
#include <cstring>
#include <string_view>

namespace ZemReplay
{

namespace
{

bool endsWithGz(const std::string& fileName)
{
    const std::string ending = ".gz";
    return fileName.size() >= ending.size() &&
           fileName.compare(fileName.size() - ending.size(), ending.size(), ending) == 0;
}

} // namespace

InflatingStream::InflatingStream(const std::string& fileName)
    : _file(gzopen(fileName.c_str(), "rb"))
{
    if (!_file)
    {
        throw BadTrace(fileName + ": can't be opened: " + std::strerror(errno));
    }
    readPiece();
    if (_error.empty() && endsWithGz(fileName) && gzdirect(_file) != 0)
    {
        _error = "isn't compressed with gzip, though its name says so";
    }
}

InflatingStream::~InflatingStream()
{
    gzclose_r(_file);
}

char* InflatingStream::PutBegin()
{
    ZEM_FAIL("The stream is read-only");
}

void InflatingStream::Put(char)
{
    ZEM_FAIL("The stream is read-only");
}

std::size_t InflatingStream::PutEnd(char*)
{
    ZEM_FAIL("The stream is read-only");
}

void InflatingStream::readPiece()
{
    _sizeBefore += _size;
    _position = 0;
    const int count = gzread(_file, _piece.data(), static_cast<unsigned>(_piece.size()));
    _size = count > 0 ? static_cast<std::size_t>(count) : 0;
    if (_size == _piece.size())
    {
        return;
    }
    // A file that is cut short gives what it has first, and the error beside it.
    int error = Z_OK;
    const char* message = gzerror(_file, &error);
    if (error == Z_ERRNO)
    {
        _error = std::string("can't be read: ") + std::strerror(errno);
    }
    else if (error == Z_BUF_ERROR)
    {
        _error = "is cut short";
    }
    else if (error != Z_OK && error != Z_STREAM_END)
    {
        // The message begins with the path that the file was opened by, which the caller names already.
        const std::string_view said = message;
        const std::size_t pathEnd = said.rfind(": ");
        _error = "is damaged: " + std::string(pathEnd == said.npos ? said : said.substr(pathEnd + 2));
    }
}

} // namespace ZemReplay
