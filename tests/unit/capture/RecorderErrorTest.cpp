#include "capture/RecorderError.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(RecorderError, AWriterErrorPutsItsMessageBehindTheSentence) {
    EXPECT_EQ(RecorderError::writer("Formato de video no admitido.").text,
              "No se pudo escribir el video. Formato de video no admitido.");
    EXPECT_EQ(RecorderError::writer("").text, "No se pudo escribir el video. ");
}

TEST(RecorderError, AMissingSourceShowsItsMessageAsItIs) {
    EXPECT_EQ(RecorderError::noSource("No se encontró la pantalla.").text, "No se encontró la pantalla.");
}

TEST(RecorderError, NoFramesSaysThatTheRecordingEndedTooEarly) {
    EXPECT_EQ(RecorderError::noFrames().text, "La grabación terminó antes de capturar imagen.");
}

TEST(RecorderError, EveryCaseHasACodeOfItsOwnInOneDomain) {
    EXPECT_EQ(RecorderError::writer("").code, 0);
    EXPECT_EQ(RecorderError::noSource("").code, 1);
    EXPECT_EQ(RecorderError::noFrames().code, 2);
    EXPECT_EQ(RecorderError::writer("").domain, "VelmoStudio.RecorderError");
    EXPECT_EQ(RecorderError::noSource("").domain, "VelmoStudio.RecorderError");
    EXPECT_EQ(RecorderError::noFrames().domain, "VelmoStudio.RecorderError");
}

} // namespace
} // namespace velmo
