#pragma once

#include <zlib.h>

#include <array>
#include <cstddef>
#include <string>

namespace ZemReplay
{

/// The bytes of a file, inflated if it is compressed, as the JSON reader takes them. Only one piece is in memory at a
/// time. A zero byte stands for the end, so that what comes to an end before `isAtEnd` holds one.
class InflatingStream
{
public:
    using Ch = char;

    /// Fails: `BadTrace` when the file can't be opened.
    explicit InflatingStream(const std::string& fileName);
    InflatingStream(const InflatingStream&) = delete;
    InflatingStream& operator=(const InflatingStream&) = delete;
    ~InflatingStream();

    char Peek() const
    {
        return _position < _size ? _piece[_position] : '\0';
    }

    char Take()
    {
        const char byte = Peek();
        if (_position < _size && ++_position == _size)
        {
            readPiece();
        }
        return byte;
    }

    /// The number of bytes taken.
    std::size_t Tell() const
    {
        return _sizeBefore + _position;
    }

    bool isAtEnd() const
    {
        return _position == _size;
    }

    /// What went wrong while reading; empty if nothing did.
    const std::string& getError() const
    {
        return _error;
    }

    // The reader wants these of a stream that it parses in place, which this one isn't.
    char* PutBegin();
    void Put(char);
    std::size_t PutEnd(char*);

private:
    void readPiece();

    gzFile _file;
    std::array<char, 65536> _piece;
    std::size_t _size = 0;
    std::size_t _position = 0;
    std::size_t _sizeBefore = 0;
    std::string _error;
};

} // namespace ZemReplay
