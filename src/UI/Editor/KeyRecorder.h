#pragma once

#include "Core/HotKey/KeyCapture.h"

#include <QObject>
#include <QStringList>
#include <QtQmlIntegration>

namespace Tavrin {

/// Assigns a key combination: while it records, the next key that is pressed, with what is held, is the
/// new combination. Key code 0 without modifiers means that none is assigned; the A key, whose code that
/// is, can therefore not be had alone, and has no badge. Main thread.
class KeyRecorder : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to the editor")
    Q_PROPERTY(quint32 keyCode READ keyCode NOTIFY combinationChanged)
    Q_PROPERTY(quint32 modifiers READ modifiers NOTIFY combinationChanged)
    Q_PROPERTY(bool isAssigned READ isAssigned NOTIFY combinationChanged)
    Q_PROPERTY(QList<QString> modifierBadges READ modifierBadges NOTIFY combinationChanged)
    Q_PROPERTY(QString keyBadge READ keyBadge NOTIFY combinationChanged)
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY recordingChanged)

public:
    /// The combination belongs to the editor and is written directly; everything outlives the recorder.
    KeyRecorder(KeyCapture& capture, std::uint32_t& keyCode, std::uint32_t& modifiers);
    /// Gives the keyboard back.
    ~KeyRecorder() override;

    quint32 keyCode() const { return m_keyCode; }
    quint32 modifiers() const { return m_modifiers; }
    bool isAssigned() const { return m_keyCode != 0 || m_modifiers != 0; }
    /// The modifiers that are part of the combination, in display order.
    QStringList modifierBadges() const;
    /// The key; empty if it has no badge.
    QString keyBadge() const;
    bool isRecording() const { return m_isRecording; }

    Q_INVOKABLE void start();
    /// Ends the recording; the combination stays as it was.
    Q_INVOKABLE void stop();
    Q_INVOKABLE void toggle();
    /// Ends the recording and leaves no combination.
    Q_INVOKABLE void clear();

Q_SIGNALS:
    void combinationChanged();
    void recordingChanged();

private:
    void handleKeyDown(std::uint32_t keyCode, std::uint32_t modifiers);
    void setCombination(std::uint32_t keyCode, std::uint32_t modifiers);
    void setRecording(bool isRecording);

    KeyCapture& m_capture;
    std::uint32_t& m_keyCode;
    std::uint32_t& m_modifiers;
    bool m_isRecording = false;
};

} // namespace Tavrin
