# codecs/ape: Monkey's Audio, written and read here: no library of the platform writes it.
# Kernels.h has the inner loops, once for each instruction set; FrameEncoder and
# FrameDecoder work on a group of frames, Encode and Decode on a file, of which an ApeLink may name a part.
set(ape_sources ApeFileReader.cpp ApeFileWriter.cpp ApeInput.cpp ApeLink.cpp ApeWork.cpp Crc32.cpp Decode.cpp
    Encode.cpp FrameDecoder.cpp FrameEncoder.cpp Kernels.cpp KernelsPortable.cpp Lanes.cpp RangeCoder.cpp Reciprocals.cpp
    WavLayout.cpp)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  set(ape_kernels_x86 ON)
  list(APPEND ape_sources KernelsAvx2.cpp KernelsSse2.cpp)
endif()
list(TRANSFORM ape_sources PREPEND ape/)
