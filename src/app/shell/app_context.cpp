#include "app/shell/app_context.h"

#include <QGuiApplication>

namespace lexiquill {

namespace {

AppContext *currentContext = nullptr;

} // namespace

AppContext::AppContext(Services &services)
    : m_preferences(services.defaults),
      m_imports(services),
      m_removedDictionaries(services.shelf),
      m_content(services, m_imports),
      m_appearance(*qGuiApp),
      m_delegate(services, m_content, m_imports, m_appearance),
      m_tray(services, m_preferences, m_content, m_delegate),
      m_hotKeyNotice(services, m_delegate),
      m_backgroundNotice(services, m_tray, m_delegate),
      m_reminder(services, m_preferences, m_content, m_delegate) {
    Services::setCurrent(&services);
    currentContext = this;
}

AppContext::~AppContext() {
    currentContext = nullptr;
    Services::setCurrent(nullptr);
}

AppContext &AppContext::current() {
    Q_ASSERT(currentContext != nullptr);
    return *currentContext;
}

} // namespace lexiquill
