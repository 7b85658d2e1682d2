#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <span>

namespace velmo {

class DefaultsStore;

/// Ways of recording under names: snapshots of what lies raw in the store, so that saving knows no types and the
/// class material travels along. Main thread.
///
/// A store that is damaged in this place reads as one without profiles; a snapshot that cannot be read is passed
/// over. Nothing here fails towards the user.
class SettingsProfiles final : public QObject {
    Q_OBJECT

public:
    /// `store` is borrowed and must outlive this object. `reload` is called once the values of a profile are in the
    /// store, before the profile is current: it brings up to date whoever has read them already. May be empty.
    SettingsProfiles(DefaultsStore& store, std::function<void()> reload);
    ~SettingsProfiles() override;

    /// The program's one object, registered by the composition root before anything asks for it.
    static SettingsProfiles& shared();
    /// Borrowed; null takes the registration back.
    static void setShared(SettingsProfiles* profiles);

    /// Sorted as a reader expects, without regard to case.
    const QStringList& names() const { return names_; }
    /// The profile last saved or applied.
    const std::optional<QString>& current() const { return current_; }

    /// Keeps the present state under the trimmed name, in place of a profile of that name, and makes it current. A
    /// name of blanks does nothing.
    void save(const QString& name);
    /// Lays the profile over the present state: what it does not hold stays. Nothing happens for an unknown name.
    void apply(const QString& name);
    void remove(const QString& name);

    /// What a profile holds, in this order.
    static std::span<const char* const> keys();

signals:
    /// Names or the current one; read them again.
    void changed();
    /// A profile holds now: previews and what is on the screen follow it.
    void applied();

private:
    QJsonObject stored() const;
    void store(const QJsonObject& profiles);
    void setCurrent(const std::optional<QString>& name);
    void refresh();

    DefaultsStore& store_;
    std::function<void()> reload_;
    QStringList names_;
    std::optional<QString> current_;
};

} // namespace velmo
