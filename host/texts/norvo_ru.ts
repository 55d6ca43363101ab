<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="en">
<context>
    <name>AccessibleDevice</name>
    <message>
        <source>on</source>
        <translation>включено</translation>
    </message>
    <message>
        <source>off</source>
        <translation>выключено</translation>
    </message>
    <message>
        <source>no current value</source>
        <translation>нет текущего значения</translation>
    </message>
</context>
<context>
    <name>norvo::CanvasActions</name>
    <message>
        <source>Move</source>
        <translation>Переместить</translation>
    </message>
    <message>
        <source>Wider</source>
        <translation>Шире</translation>
    </message>
    <message>
        <source>Narrower</source>
        <translation>Уже</translation>
    </message>
    <message>
        <source>Higher</source>
        <translation>Выше</translation>
    </message>
    <message>
        <source>Lower</source>
        <translation>Ниже</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Вырезать</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Копировать</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Вставить</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Дублировать</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>Select all</source>
        <translation>Выделить всё</translation>
    </message>
    <message>
        <source>Move to page</source>
        <translation>Переместить на страницу</translation>
    </message>
    <message>
        <source>Insert row above</source>
        <translation>Вставить строку выше</translation>
    </message>
    <message>
        <source>Insert row below</source>
        <translation>Вставить строку ниже</translation>
    </message>
    <message>
        <source>Remove row</source>
        <translation>Удалить строку</translation>
    </message>
    <message>
        <source>Insert column before</source>
        <translation>Вставить столбец перед</translation>
    </message>
    <message>
        <source>Insert column behind</source>
        <translation>Вставить столбец за</translation>
    </message>
    <message>
        <source>Remove column</source>
        <translation>Удалить столбец</translation>
    </message>
    <message>
        <source>Save as a template</source>
        <translation>Сохранить как шаблон</translation>
    </message>
</context>
<context>
    <name>norvo::CanvasEdits</name>
    <message>
        <source>%1 devices</source>
        <translation>устройства: %1</translation>
    </message>
    <message>
        <source>Move %1</source>
        <translation>Переместить %1</translation>
    </message>
    <message>
        <source>Resize %1</source>
        <translation>Изменить размер: %1</translation>
    </message>
    <message>
        <source>Delete %1</source>
        <translation>Удалить %1</translation>
    </message>
    <message>
        <source>Cut %1</source>
        <translation>Вырезать %1</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Вставить</translation>
    </message>
    <message>
        <source>Duplicate %1</source>
        <translation>Дублировать %1</translation>
    </message>
    <message>
        <source>Insert a row</source>
        <translation>Вставить строку</translation>
    </message>
    <message>
        <source>Insert a column</source>
        <translation>Вставить столбец</translation>
    </message>
    <message>
        <source>Remove a row</source>
        <translation>Удалить строку</translation>
    </message>
    <message>
        <source>Remove a column</source>
        <translation>Удалить столбец</translation>
    </message>
    <message>
        <source>Put %1</source>
        <translation>Вставить %1</translation>
    </message>
</context>
<context>
    <name>norvo::CanvasModel</name>
    <message>
        <source>Not on the page</source>
        <translation>Не на странице</translation>
    </message>
    <message>
        <source>%1 is there</source>
        <translation>Там %1</translation>
    </message>
    <message>
        <source>%1 and %2 would be in one place</source>
        <translation>%1 и %2 оказались бы на одном месте</translation>
    </message>
</context>
<context>
    <name>norvo::ColourEditor</name>
    <message>
        <source>Colours</source>
        <translation>Цвета</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Цвет</translation>
    </message>
</context>
<context>
    <name>norvo::ConflictSheet</name>
    <message>
        <source>The file was changed by others, too</source>
        <translation>Файл изменён и другими</translation>
    </message>
    <message>
        <source>Decide later</source>
        <translation>Решить позже</translation>
    </message>
    <message>
        <source>Take theirs</source>
        <translation>Взять их вариант</translation>
    </message>
    <message>
        <source>Save mine over it</source>
        <translation>Сохранить мой поверх</translation>
    </message>
    <message>
        <source>Here, not saved</source>
        <translation>Здесь, не сохранено</translation>
    </message>
    <message>
        <source>In the file</source>
        <translation>В файле</translation>
    </message>
</context>
<context>
    <name>norvo::DevicePane</name>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>Outputs and inputs</source>
        <translation>Выходы и входы</translation>
    </message>
</context>
<context>
    <name>norvo::EditCanvas</name>
    <message>
        <source>%1, row %2, column %3</source>
        <translation>%1, строка %2, столбец %3</translation>
    </message>
    <message>
        <source>The panel</source>
        <translation>Панель</translation>
    </message>
    <message>
        <source>free</source>
        <translation>свободно</translation>
    </message>
</context>
<context>
    <name>norvo::EditSession</name>
    <message>
        <source>It is made %1: change it there</source>
        <translation>Создано %1: менять там</translation>
    </message>
    <message>
        <source>It stands in another file</source>
        <translation>Оно в другом файле</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>строка %1: %2</translation>
    </message>
    <message>
        <source>Add %1</source>
        <translation>Добавить %1</translation>
    </message>
</context>
<context>
    <name>norvo::EditedFile</name>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 не записать: %2</translation>
    </message>
    <message>
        <source>The file was changed by others, and does not run: %1</source>
        <translation>Файл изменён другими и не запускается: %1</translation>
    </message>
    <message>
        <source>Take over what others have changed</source>
        <translation>Принять чужие изменения</translation>
    </message>
</context>
<context>
    <name>norvo::EditorFrame</name>
    <message>
        <source>Menu</source>
        <translation>Меню</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Отменить</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Повторить</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Сохранить</translation>
    </message>
    <message>
        <source>End editing</source>
        <translation>Закончить правку</translation>
    </message>
    <message>
        <source>Settings of the selected device</source>
        <translation>Настройки выбранного устройства</translation>
    </message>
    <message>
        <source>Add a device</source>
        <translation>Добавить устройство</translation>
    </message>
    <message>
        <source>Connections</source>
        <translation>Связи</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Новое</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Устройство</translation>
    </message>
    <message>
        <source>Wires</source>
        <translation>Связи</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Готово</translation>
    </message>
    <message>
        <source>Tap a device for its outputs and inputs, then what to connect</source>
        <translation>Коснитесь устройства, затем того, с чем соединить</translation>
    </message>
    <message>
        <source>Tap a type, then the cell that it goes to</source>
        <translation>Коснитесь типа, затем ячейки для него</translation>
    </message>
    <message>
        <source>Tap a device to select it, draw it to move it</source>
        <translation>Коснитесь устройства, чтобы выбрать; тяните, чтобы двигать</translation>
    </message>
    <message>
        <source>Undo: %1</source>
        <translation>Отменить: %1</translation>
    </message>
    <message>
        <source>Redo: %1</source>
        <translation>Повторить: %1</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Файл</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Показать</translation>
    </message>
    <message>
        <source>Settings and pages of the panel</source>
        <translation>Настройки и страницы панели</translation>
    </message>
    <message>
        <source>Panel</source>
        <translation>Панель</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Страницы</translation>
    </message>
    <message>
        <source>%1 shows nothing: it is on the shelf, below the page in Wires</source>
        <translation>%1 на панели не видно: оно на полке под страницей в «Связях»</translation>
    </message>
    <message>
        <source>Templates</source>
        <translation>Шаблоны</translation>
    </message>
</context>
<context>
    <name>norvo::KeyboardKey</name>
    <message>
        <source>Keyboard on the screen</source>
        <translation>Экранная клавиатура</translation>
    </message>
</context>
<context>
    <name>norvo::LinesEditor</name>
    <message>
        <source>%1: one more line</source>
        <translation>%1: ещё одна строка</translation>
    </message>
</context>
<context>
    <name>norvo::MenuSheet</name>
    <message>
        <source>Menu</source>
        <translation>Меню</translation>
    </message>
</context>
<context>
    <name>norvo::FileEditor</name>
    <message>
        <source>Files</source>
        <translation>Файлы</translation>
    </message>
</context>
<context>
    <name>norvo::FileFault</name>
    <message>
        <source>line %1: </source>
        <translation>строка %1: </translation>
    </message>
    <message>
        <source>The file has an error: %1</source>
        <translation>В файле ошибка: %1</translation>
    </message>
    <message>
        <source>Errors in the panel&apos;s file</source>
        <translation>Ошибки в файле панели</translation>
    </message>
    <message>
        <source>Read again</source>
        <translation>Прочитать снова</translation>
    </message>
</context>
<context>
    <name>norvo::NumberEditor</name>
    <message>
        <source>%1: less</source>
        <translation>%1: меньше</translation>
    </message>
    <message>
        <source>%1: more</source>
        <translation>%1: больше</translation>
    </message>
</context>
<context>
    <name>norvo::PagesList</name>
    <message>
        <source>Add a page</source>
        <translation>Добавить страницу</translation>
    </message>
    <message>
        <source>Page up by one</source>
        <translation>Страницу выше</translation>
    </message>
    <message>
        <source>Page down by one</source>
        <translation>Страницу ниже</translation>
    </message>
    <message>
        <source>Remove the page</source>
        <translation>Удалить страницу</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Страницы</translation>
    </message>
    <message>
        <source>Name of the page</source>
        <translation>Название страницы</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Новая</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>Devices: %1</source>
        <translation>Устройств: %1</translation>
    </message>
    <message>
        <source>The only page</source>
        <translation>Единственная страница</translation>
    </message>
    <message>
        <source>Name the page %1</source>
        <translation>Назвать страницу %1</translation>
    </message>
    <message>
        <source>Rename the page %1 to %2</source>
        <translation>Переименовать страницу %1 в %2</translation>
    </message>
    <message>
        <source>Page %1</source>
        <translation>Страница %1</translation>
    </message>
    <message>
        <source>Add the page %1</source>
        <translation>Добавить страницу %1</translation>
    </message>
    <message>
        <source>Move the page %1</source>
        <translation>Переместить страницу %1</translation>
    </message>
    <message>
        <source>Remove the page %1</source>
        <translation>Удалить страницу %1</translation>
    </message>
</context>
<context>
    <name>norvo::PanelEditing</name>
    <message>
        <source>Begin with an example</source>
        <translation>Начать с примера</translation>
    </message>
    <message>
        <source>Take over what was not saved</source>
        <translation>Принять несохранённое</translation>
    </message>
</context>
<context>
    <name>norvo::PanelForm</name>
    <message>
        <source>The text above the window; without it, the name of the file.</source>
        <translation>Текст над окном; без него имя файла.</translation>
    </message>
    <message>
        <source>The colours; system: as the desktop has them.</source>
        <translation>Цвета; system: как в среде рабочего стола.</translation>
    </message>
    <message>
        <source>How large keys are at least: for fingers, or for hands in gloves.</source>
        <translation>Наименьший размер клавиш: для пальцев (fingers) или перчаток (gloves).</translation>
    </message>
    <message>
        <source>The size in pixels that the panel was laid out for, such as 1024x600.</source>
        <translation>Размер в пикселях, для которого создана панель, например 1024x600.</translation>
    </message>
    <message>
        <source>What fills a larger window: grow, the widgets do; scale, the page is drawn larger, which needs a design.</source>
        <translation>Что заполняет большее окно: grow, элементы; scale, страница рисуется крупнее, для этого нужен design.</translation>
    </message>
    <message>
        <source>Of the program's own texts and of the keyboard, such as de or pt_BR; without it, the system's.</source>
        <translation>Текстов программы и клавиатуры, например de или pt_BR; без неё язык системы.</translation>
    </message>
    <message>
        <source>Set %1 of the panel</source>
        <translation>Задать %1 панели</translation>
    </message>
    <message>
        <source>Reset %1 of the panel</source>
        <translation>Сбросить %1 панели</translation>
    </message>
</context>
<context>
    <name>norvo::PanelPane</name>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Страницы</translation>
    </message>
</context>
<context>
    <name>norvo::PanelWindow</name>
    <message>
        <source>This panel cannot start</source>
        <translation>Эта панель не может быть запущена</translation>
    </message>
    <message>
        <source>Read again</source>
        <translation>Прочитать снова</translation>
    </message>
</context>
<context>
    <name>norvo::ErrorTile</name>
    <message>
        <source>Mend the cause or the panel file, then start the panel again.</source>
        <translation>Устраните причину или исправьте файл панели, затем запустите панель снова.</translation>
    </message>
</context>
<context>
    <name>norvo::EntryDialog</name>
    <message>
        <source>OK</source>
        <translation>ОК</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>Allowed: %1</source>
        <translation>Допустимо: %1</translation>
    </message>
    <message>
        <source>Old value: %1</source>
        <translation>Старое значение: %1</translation>
    </message>
    <message>
        <source>Backspace</source>
        <translation>Удалить символ</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Очистить</translation>
    </message>
    <message>
        <source>Step up</source>
        <translation>Шаг вверх</translation>
    </message>
    <message>
        <source>Step down</source>
        <translation>Шаг вниз</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Регистр</translation>
    </message>
    <message>
        <source>Capital letters</source>
        <translation>Заглавные буквы</translation>
    </message>
    <message>
        <source>This text is not accepted</source>
        <translation>Этот текст не принимается</translation>
    </message>
    <message>
        <source>Cursor left</source>
        <translation>Курсор влево</translation>
    </message>
    <message>
        <source>Cursor right</source>
        <translation>Курсор вправо</translation>
    </message>
</context>
<context>
    <name>norvo::KeyPages</name>
    <message>
        <source>More keys</source>
        <translation>Другие клавиши</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Ещё</translation>
    </message>
</context>
<context>
    <name>norvo::RecoverySheet</name>
    <message>
        <source>The last editing ended before its changes were saved</source>
        <translation>Прошлая правка прервалась до сохранения</translation>
    </message>
    <message>
        <source>What was not saved</source>
        <translation>Что не было сохранено</translation>
    </message>
    <message>
        <source>In the file</source>
        <translation>В файле</translation>
    </message>
    <message>
        <source>Decide later</source>
        <translation>Решить позже</translation>
    </message>
    <message>
        <source>Drop them</source>
        <translation>Отбросить</translation>
    </message>
    <message>
        <source>Take them over</source>
        <translation>Принять</translation>
    </message>
</context>
<context>
    <name>norvo::RemovePageSheet</name>
    <message>
        <source>Remove the page %1?</source>
        <translation>Удалить страницу %1?</translation>
    </message>
    <message>
        <source>Its devices and their connections go with it: %1. Undo brings all back.</source>
        <translation>Вместе с ней уйдут её устройства и их соединения: %1. Отмена вернёт всё.</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 и ещё %2</translation>
    </message>
    <message>
        <source>Keep it</source>
        <translation>Оставить</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Удалить</translation>
    </message>
</context>
<context>
    <name>norvo::SaveSheet</name>
    <message>
        <source>There are changes that are not saved</source>
        <translation>Есть несохранённые изменения</translation>
    </message>
    <message>
        <source>Edit on</source>
        <translation>Продолжить правку</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Отбросить</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Сохранить</translation>
    </message>
</context>
<context>
    <name>norvo::StartSheet</name>
    <message>
        <source>A new panel</source>
        <translation>Новая панель</translation>
    </message>
    <message>
        <source>What shall it begin with? All of it can be changed.</source>
        <translation>С чего начать? Всё можно изменить.</translation>
    </message>
    <message>
        <source>An empty page</source>
        <translation>Пустая страница</translation>
    </message>
    <message>
        <source>Hello</source>
        <translation>Привет</translation>
    </message>
    <message>
        <source>Readings</source>
        <translation>Показания</translation>
    </message>
    <message>
        <source>Controls</source>
        <translation>Управление</translation>
    </message>
    <message>
        <source>This machine</source>
        <translation>Эта машина</translation>
    </message>
</context>
<context>
    <name>norvo::StateMark</name>
    <message>
        <source>no value yet</source>
        <translation>значения ещё нет</translation>
    </message>
    <message>
        <source>on</source>
        <translation>включено</translation>
    </message>
    <message>
        <source>off</source>
        <translation>выключено</translation>
    </message>
</context>
<context>
    <name>NumpadDialog</name>
    <message>
        <source>Enter a number</source>
        <translation>Введите число</translation>
    </message>
    <message>
        <source>This is not a number</source>
        <translation>Это не число</translation>
    </message>
    <message>
        <source>Below the lowest value allowed, %1</source>
        <translation>Меньше наименьшего допустимого значения, %1</translation>
    </message>
    <message>
        <source>Above the highest value allowed, %1</source>
        <translation>Больше наибольшего допустимого значения, %1</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>от %1 до %2</translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>не менее %1</translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation>не более %1</translation>
    </message>
    <message>
        <source>any number</source>
        <translation>любое число</translation>
    </message>
</context>
<context>
    <name>norvo::Sheet</name>
    <message>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
</context>
<context>
    <name>norvo::SourceKey</name>
    <message>
        <source>Sources %1 of %2</source>
        <translation>Источники: %1 из %2</translation>
    </message>
    <message>
        <source>%1 of %2 sources lost</source>
        <translation>Потеряно источников: %1 из %2</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>Источники</translation>
    </message>
</context>
<context>
    <name>norvo::SourceList</name>
    <message>
        <source>well</source>
        <translation>в порядке</translation>
    </message>
    <message>
        <source>lost</source>
        <translation>потерян</translation>
    </message>
    <message>
        <source>nothing heard yet</source>
        <translation>ещё нет данных</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Источник</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Состояние</translation>
    </message>
    <message>
        <source>Since</source>
        <translation>С</translation>
    </message>
    <message>
        <source>Values per second</source>
        <translation>Значений в секунду</translation>
    </message>
    <message>
        <source>Last message</source>
        <translation>Последнее сообщение</translation>
    </message>
</context>
<context>
    <name>norvo::StaleMark</name>
    <message>
        <source>not current: source lost</source>
        <translation>не обновляется: источник потерян</translation>
    </message>
    <message>
        <source>no source</source>
        <translation>нет источника</translation>
    </message>
</context>
<context>
    <name>norvo::TypePalette</name>
    <message>
        <source>Search</source>
        <translation>Поиск</translation>
    </message>
    <message>
        <source>Tap a cell to place it; tap here again to leave it</source>
        <translation>Нажмите ячейку, чтобы поместить; нажмите здесь ещё раз, чтобы отменить</translation>
    </message>
    <message>
        <source>No type is called %1. Similar:</source>
        <translation>Нет типа с именем %1. Похожие:</translation>
    </message>
    <message>
        <source>Others</source>
        <translation>Прочие</translation>
    </message>
    <message>
        <source>Nothing is found.</source>
        <translation>Ничего не найдено.</translation>
    </message>
    <message>
        <source>Remove the template</source>
        <translation>Удалить шаблон</translation>
    </message>
    <message>
        <source>Types of devices and templates</source>
        <translation>Типы устройств и шаблоны</translation>
    </message>
    <message>
        <source>Search the types and templates</source>
        <translation>Поиск типов и шаблонов</translation>
    </message>
    <message>
        <source>Templates</source>
        <translation>Шаблоны</translation>
    </message>
</context>
<context>
    <name>norvo::UnsavedCopy</name>
    <message>
        <source>What is not saved cannot be kept as %1: %2</source>
        <translation>Несохранённое не записать как %1: %2</translation>
    </message>
</context>
<context>
    <name>norvo::ValuesPage</name>
    <message>
        <source>never</source>
        <translation>никогда</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 с</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 мин</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 ч</translation>
    </message>
    <message>
        <source>Show only rows with this text</source>
        <translation>Показать только строки с этим текстом</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Устройство</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Выход</translation>
    </message>
    <message>
        <source>Last value</source>
        <translation>Последнее значение</translation>
    </message>
    <message>
        <source>Ago</source>
        <translation>Назад</translation>
    </message>
    <message>
        <source>Values per second</source>
        <translation>Значений в секунду</translation>
    </message>
    <message>
        <source>Values</source>
        <translation>Значений</translation>
    </message>
    <message>
        <source>All values</source>
        <translation>Все значения</translation>
    </message>
    <message>
        <source>Copy as text</source>
        <translation>Копировать как текст</translation>
    </message>
    <message>
        <source>Search the values</source>
        <translation>Поиск по значениям</translation>
    </message>
</context>
<context>
    <name>norvo::ReadoutAlerts</name>
    <message>
        <source>%1: no value comes</source>
        <translation>%1: значения не поступают</translation>
    </message>
    <message>
        <source>%1: below its threshold</source>
        <translation>%1: ниже порога</translation>
    </message>
    <message>
        <source>%1: above its threshold</source>
        <translation>%1: выше порога</translation>
    </message>
    <message>
        <source>%1: alarm</source>
        <translation>%1: тревога</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmLines</name>
    <message>
        <source>%1 alarms at once, first: %2</source>
        <translation>%1 тревог сразу, первая: %2</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmService</name>
    <message>
        <source>%1: connection lost</source>
        <translation>%1: связь потеряна</translation>
    </message>
    <message>
        <source>%1 does not run</source>
        <translation>%1 не работает</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmSign</name>
    <message>
        <source>High</source>
        <translation>Высокий</translation>
    </message>
    <message>
        <source>Medium</source>
        <translation>Средний</translation>
    </message>
    <message>
        <source>Low</source>
        <translation>Низкий</translation>
    </message>
    <message>
        <source>shelved</source>
        <translation>отложена</translation>
    </message>
    <message>
        <source>active</source>
        <translation>активна</translation>
    </message>
    <message>
        <source>active, acknowledged</source>
        <translation>активна, подтверждена</translation>
    </message>
    <message>
        <source>over, not acknowledged</source>
        <translation>прошла, не подтверждена</translation>
    </message>
    <message>
        <source>over</source>
        <translation>прошла</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmBar</name>
    <message>
        <source>Press to acknowledge, hold to acknowledge all</source>
        <translation>Нажатие подтверждает, удержание подтверждает все</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmStrip</name>
    <message>
        <source>Silence</source>
        <translation>Без звука</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Помощь</translation>
    </message>
    <message>
        <source>Silenced</source>
        <translation>Звук отключён</translation>
    </message>
    <message>
        <source>Alarms %1</source>
        <translation>Тревоги %1</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmDots</name>
    <message>
        <source>Alarm: %1</source>
        <translation>Тревога: %1</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmFace</name>
    <message>
        <source>Alarms</source>
        <translation>Тревоги</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmList</name>
    <message>
        <source>began</source>
        <translation>началась</translation>
    </message>
    <message>
        <source>ended</source>
        <translation>закончилась</translation>
    </message>
    <message>
        <source>acknowledged</source>
        <translation>подтверждена</translation>
    </message>
    <message>
        <source>shelved</source>
        <translation>отложена</translation>
    </message>
    <message>
        <source>taken from the shelf</source>
        <translation>возвращена</translation>
    </message>
    <message>
        <source>Priority</source>
        <translation>Приоритет</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Время</translation>
    </message>
    <message>
        <source>Alarm</source>
        <translation>Тревога</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Устройство</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Состояние</translation>
    </message>
    <message>
        <source>first</source>
        <translation>первая</translation>
    </message>
    <message>
        <source>shelved until %1</source>
        <translation>отложена до %1</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmPage</name>
    <message>
        <source>For 10 minutes</source>
        <translation>На 10 минут</translation>
    </message>
    <message>
        <source>For 1 hour</source>
        <translation>На 1 час</translation>
    </message>
    <message>
        <source>For 8 hours</source>
        <translation>На 8 часов</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Сейчас</translation>
    </message>
    <message>
        <source>Shelved</source>
        <translation>Отложенные</translation>
    </message>
    <message>
        <source>History</source>
        <translation>История</translation>
    </message>
    <message>
        <source>What is listed</source>
        <translation>Что показано</translation>
    </message>
    <message>
        <source>All priorities</source>
        <translation>Все приоритеты</translation>
    </message>
    <message>
        <source>Priority</source>
        <translation>Приоритет</translation>
    </message>
    <message>
        <source>All pages</source>
        <translation>Все страницы</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Страница</translation>
    </message>
    <message>
        <source>Save as CSV</source>
        <translation>Сохранить как CSV</translation>
    </message>
    <message>
        <source>Go to device</source>
        <translation>К устройству</translation>
    </message>
    <message>
        <source>Shelve</source>
        <translation>Отложить</translation>
    </message>
    <message>
        <source>Acknowledge all</source>
        <translation>Подтвердить все</translation>
    </message>
    <message>
        <source>Acknowledge</source>
        <translation>Подтвердить</translation>
    </message>
    <message>
        <source>Take from the shelf</source>
        <translation>Вернуть</translation>
    </message>
    <message>
        <source>The history is saved as %1</source>
        <translation>История сохранена как %1</translation>
    </message>
    <message>
        <source>The history cannot be saved as %1: %2</source>
        <translation>Историю нельзя сохранить как %1: %2</translation>
    </message>
</context>
<context>
    <name>Intent</name>
    <message>
        <source>Input value</source>
        <translation>Введите значение</translation>
    </message>
    <message>
        <source>on</source>
        <translation>включено</translation>
    </message>
    <message>
        <source>off</source>
        <translation>выключено</translation>
    </message>
</context>
<context>
    <name>norvo::QuestionSheet</name>
    <message>
        <source>Yes</source>
        <translation>Да</translation>
    </message>
    <message>
        <source>No (%1 s)</source>
        <translation>Нет (%1 с)</translation>
    </message>
</context>
<context>
    <name>norvo::LockMark</name>
    <message>
        <source>locked</source>
        <translation>заблокировано</translation>
    </message>
</context>
<context>
    <name>norvo::LockKey</name>
    <message>
        <source>Operator</source>
        <translation>Оператор</translation>
    </message>
    <message>
        <source>Engineer</source>
        <translation>Инженер</translation>
    </message>
    <message>
        <source>Locked</source>
        <translation>Заблокировано</translation>
    </message>
    <message>
        <source>Locked. Unlock</source>
        <translation>Заблокировано. Разблокировать</translation>
    </message>
    <message>
        <source>%1. Lock</source>
        <translation>%1. Заблокировать</translation>
    </message>
</context>
<context>
    <name>norvo::AccessFace</name>
    <message>
        <source>Really operate %1?</source>
        <translation>Действительно управлять: %1?</translation>
    </message>
    <message>
        <source>PIN: %1</source>
        <translation>PIN: %1</translation>
    </message>
    <message>
        <source>This PIN is wrong.</source>
        <translation>Неверный PIN.</translation>
    </message>
    <message>
        <source>Too many wrong PINs</source>
        <translation>Слишком много неверных PIN</translation>
    </message>
    <message>
        <source>Try again in %1 s.</source>
        <translation>Повторите через %1 с.</translation>
    </message>
</context>
<context>
    <name>norvo::FileSheet</name>
    <message>
        <source>File</source>
        <translation>Файл</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>Использовать</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Открыть</translation>
    </message>
</context>
<context>
    <name>norvo::FormHead</name>
    <message>
        <source>Id of the device</source>
        <translation>Идентификатор устройства</translation>
    </message>
    <message>
        <source>Nothing is selected</source>
        <translation>Ничего не выбрано</translation>
    </message>
    <message>
        <source>%1 devices</source>
        <translation>устройств: %1</translation>
    </message>
    <message>
        <source>Select a device on the panel.</source>
        <translation>Выберите устройство на панели.</translation>
    </message>
</context>
<context>
    <name>norvo::GraphTools</name>
    <message>
        <source>Graph tools: %1</source>
        <translation>Инструменты графика: %1</translation>
    </message>
</context>
<context>
    <name>norvo::SeenPoints</name>
    <message>
        <source>No. %1</source>
        <translation>№ %1</translation>
    </message>
</context>
<context>
    <name>norvo::SwitchEditor</name>
    <message>
        <source>yes</source>
        <translation>да</translation>
    </message>
    <message>
        <source>no</source>
        <translation>нет</translation>
    </message>
</context>
<context>
    <name>norvo::ToolPane</name>
    <message>
        <source>Pause</source>
        <translation>Пауза</translation>
    </message>
    <message>
        <source>Live</source>
        <translation>Сейчас</translation>
    </message>
    <message>
        <source>Fix range</source>
        <translation>Держать шкалу</translation>
    </message>
    <message>
        <source>Save CSV</source>
        <translation>Сохранить CSV</translation>
    </message>
    <message>
        <source>Save picture</source>
        <translation>Снимок</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>Not live: %1</source>
        <translation>Не сейчас: %1</translation>
    </message>
    <message>
        <source>reading earlier values</source>
        <translation>читаются более ранние значения</translation>
    </message>
    <message>
        <source>beginning of the record</source>
        <translation>начало записи</translation>
    </message>
    <message>
        <source>the history cannot be read</source>
        <translation>запись не удаётся прочитать</translation>
    </message>
    <message>
        <source>later values dropped until live</source>
        <translation>более поздние значения отброшены до возврата к «Сейчас»</translation>
    </message>
    <message>
        <source>range by hand</source>
        <translation>шкала вручную</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Сохранено</translation>
    </message>
    <message>
        <source>Not saved</source>
        <translation>Не сохранено</translation>
    </message>
</context>
<context>
    <name>norvo::ConnectionSheet</name>
    <message>
        <source>New connection</source>
        <translation>Новое соединение</translation>
    </message>
    <message>
        <source>Change a connection</source>
        <translation>Изменение соединения</translation>
    </message>
    <message>
        <source>From this output</source>
        <translation>От этого выхода</translation>
    </message>
    <message>
        <source>To this input</source>
        <translation>К этому входу</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Соединить</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Изменить</translation>
    </message>
    <message>
        <source>What is to be passed on?</source>
        <translation>Что передавать?</translation>
    </message>
</context>
<context>
    <name>norvo::ConnectionTable</name>
    <message>
        <source>Add a connection</source>
        <translation>Добавить соединение</translation>
    </message>
    <message>
        <source>Change the chosen connection</source>
        <translation>Изменить выбранное соединение</translation>
    </message>
    <message>
        <source>Remove the chosen connection</source>
        <translation>Удалить выбранное соединение</translation>
    </message>
    <message>
        <source>Show only rows with this text</source>
        <translation>Показывать только строки с этим текстом</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Соединение</translation>
    </message>
    <message>
        <source>Last value</source>
        <translation>Последнее значение</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Добавить</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Изменить</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>Search the connections</source>
        <translation>Поиск по соединениям</translation>
    </message>
</context>
<context>
    <name>norvo::DeviceForm</name>
    <message>
        <source>More parameters</source>
        <translation>Другие параметры</translation>
    </message>
    <message>
        <source>Place on the panel</source>
        <translation>Место на панели</translation>
    </message>
    <message>
        <source>Operation</source>
        <translation>Управление</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Поиск</translation>
    </message>
    <message>
        <source>Search the parameters</source>
        <translation>Поиск по параметрам</translation>
    </message>
    <message>
        <source>Rename %1 to %2</source>
        <translation>Переименовать %1 в %2</translation>
    </message>
    <message>
        <source>%1 devices</source>
        <translation>устройств: %1</translation>
    </message>
    <message>
        <source>Set %1 of %2</source>
        <translation>Задать %1 у %2</translation>
    </message>
    <message>
        <source>Reset %1 of %2</source>
        <translation>Сбросить %1 у %2</translation>
    </message>
    <message>
        <source>Move %1</source>
        <translation>Переместить %1</translation>
    </message>
</context>
<context>
    <name>norvo::DeviceShelf</name>
    <message>
        <source>Devices that are not seen on the panel</source>
        <translation>Устройства, которых не видно на панели</translation>
    </message>
    <message>
        <source>%1 out, %2 in</source>
        <translation>выходов %1, входов %2</translation>
    </message>
</context>
<context>
    <name>norvo::ParamEditor</name>
    <message>
        <source>different values</source>
        <translation>разные значения</translation>
    </message>
</context>
<context>
    <name>norvo::ParamRow</name>
    <message>
        <source>%1: back to the default</source>
        <translation>%1: вернуть значение по умолчанию</translation>
    </message>
    <message>
        <source>now: %1</source>
        <translation>сейчас: %1</translation>
    </message>
    <message>
        <source>a number, or %1</source>
        <translation>число или %1</translation>
    </message>
    <message>
        <source>%1, or %2</source>
        <translation>%1 или %2</translation>
    </message>
</context>
<context>
    <name>norvo::ParamStates</name>
    <message>
        <source>has an effect only where %1 is %2</source>
        <translation>действует, только если %1 — %2</translation>
    </message>
    <message>
        <source>Whether its document may reach the network.</source>
        <translation>Разрешён ли его документу доступ к сети.</translation>
    </message>
    <message>
        <source>Whether the value that an operator gives is put back at the next start; send: and sent.</source>
        <translation>Восстанавливается ли при следующем пуске значение, заданное оператором; send: с отправкой.</translation>
    </message>
    <message>
        <source>Who may operate it.</source>
        <translation>Кто может им управлять.</translation>
    </message>
    <message>
        <source>What is asked before it changes.</source>
        <translation>О чём спросить перед изменением.</translation>
    </message>
</context>
<context>
    <name>norvo::Port</name>
    <message>
        <source>number</source>
        <translation>число</translation>
    </message>
    <message>
        <source>text</source>
        <translation>текст</translation>
    </message>
    <message>
        <source>yes/no</source>
        <translation>да/нет</translation>
    </message>
    <message>
        <source>array</source>
        <translation>массив</translation>
    </message>
    <message>
        <source>bytes</source>
        <translation>байты</translation>
    </message>
    <message>
        <source>any value</source>
        <translation>любое значение</translation>
    </message>
    <message>
        <source>a pulse</source>
        <translation>импульс</translation>
    </message>
    <message>
        <source>%1 or %2</source>
        <translation>%1 или %2</translation>
    </message>
</context>
<context>
    <name>norvo::PortColumn</name>
    <message>
        <source>Show only what holds this text</source>
        <translation>Показывать только содержащее этот текст</translation>
    </message>
</context>
<context>
    <name>norvo::PortKeys</name>
    <message>
        <source>Output %1</source>
        <translation>Выход %1</translation>
    </message>
    <message>
        <source>Input %1</source>
        <translation>Вход %1</translation>
    </message>
    <message>
        <source>All %1 ...</source>
        <translation>Все %1 ...</translation>
    </message>
</context>
<context>
    <name>norvo::PortList</name>
    <message>
        <source>%1 is connected to %2 already</source>
        <translation>%1 уже соединён с %2</translation>
    </message>
    <message>
        <source>%1 carries %2, %3 takes %4</source>
        <translation>%1 передаёт %2, %3 принимает %4</translation>
    </message>
</context>
<context>
    <name>norvo::PortRow</name>
    <message>
        <source>Add</source>
        <translation>Добавить</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>new output</source>
        <translation>новый выход</translation>
    </message>
    <message>
        <source>new input</source>
        <translation>новый вход</translation>
    </message>
    <message>
        <source>New output</source>
        <translation>Новый выход</translation>
    </message>
    <message>
        <source>New input</source>
        <translation>Новый вход</translation>
    </message>
    <message>
        <source>Name of %1</source>
        <translation>Имя %1</translation>
    </message>
    <message>
        <source>Definition</source>
        <translation>Определение</translation>
    </message>
    <message>
        <source>Definition of %1</source>
        <translation>Определение %1</translation>
    </message>
    <message>
        <source>Add %1</source>
        <translation>Добавить %1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>Удалить %1</translation>
    </message>
    <message>
        <source>Rename %1.%2</source>
        <translation>Переименовать %1.%2</translation>
    </message>
    <message>
        <source>Define %1.%2</source>
        <translation>Определить %1.%2</translation>
    </message>
    <message>
        <source>Add %1.%2</source>
        <translation>Добавить %1.%2</translation>
    </message>
    <message>
        <source>Remove %1.%2</source>
        <translation>Удалить %1.%2</translation>
    </message>
</context>
<context>
    <name>norvo::PortsForm</name>
    <message>
        <source>Outputs of %1</source>
        <translation>Выходы %1</translation>
    </message>
    <message>
        <source>Inputs of %1</source>
        <translation>Входы %1</translation>
    </message>
</context>
<context>
    <name>norvo::WireCanvas</name>
    <message>
        <source>Remove the connection</source>
        <translation>Удалить соединение</translation>
    </message>
    <message>
        <source>Go to the other end</source>
        <translation>Перейти к другому концу</translation>
    </message>
    <message>
        <source>Connections of the panel</source>
        <translation>Соединения панели</translation>
    </message>
    <message>
        <source>%1 inputs</source>
        <translation>входов: %1</translation>
    </message>
    <message>
        <source>%1 outputs</source>
        <translation>выходов: %1</translation>
    </message>
    <message>
        <source>%1 has no inputs</source>
        <translation>У %1 нет входов</translation>
    </message>
    <message>
        <source>%1 has no outputs</source>
        <translation>У %1 нет выходов</translation>
    </message>
    <message>
        <source>%1 has no outputs and no inputs</source>
        <translation>У %1 нет ни выходов, ни входов</translation>
    </message>
    <message>
        <source>Outputs of %1</source>
        <translation>Выходы %1</translation>
    </message>
    <message>
        <source>Inputs of %1</source>
        <translation>Входы %1</translation>
    </message>
    <message>
        <source>What is to be passed on?</source>
        <translation>Что передавать?</translation>
    </message>
</context>
<context>
    <name>norvo::WireEdits</name>
    <message>
        <source>It is made %1: change it there</source>
        <translation>Создано %1: измените там</translation>
    </message>
    <message>
        <source>It stands in another file</source>
        <translation>Находится в другом файле</translation>
    </message>
    <message>
        <source>Connect %1 to %2</source>
        <translation>Соединить %1 с %2</translation>
    </message>
    <message>
        <source>Change the connection of %1 to %2</source>
        <translation>Изменить соединение %1 с %2</translation>
    </message>
    <message>
        <source>Disconnect %1 from %2</source>
        <translation>Отсоединить %1 от %2</translation>
    </message>
    <message>
        <source>Connected. This closes the circle %1; its values are passed on one after the other</source>
        <translation>Соединено. Это замыкает круг %1; его значения передаются по очереди</translation>
    </message>
</context>
<context>
    <name>norvo::WireValues</name>
    <message>
        <source>pulse</source>
        <translation>импульс</translation>
    </message>
</context>
<context>
    <name>norvo::TemplateSet</name>
    <message>
        <source>The file is too large</source>
        <translation>Файл слишком велик</translation>
    </message>
    <message>
        <source>It needs the type %1, which no plug-in has</source>
        <translation>Нужен тип %1, которого нет ни в одном модуле</translation>
    </message>
    <message>
        <source>It has no devices</source>
        <translation>В нём нет устройств</translation>
    </message>
    <message>
        <source>A template needs a name</source>
        <translation>Шаблону нужно имя</translation>
    </message>
    <message>
        <source>There is a template of that name already</source>
        <translation>Шаблон с таким именем уже есть</translation>
    </message>
    <message>
        <source>It cannot be written to %1: %2</source>
        <translation>Не удаётся записать в %1: %2</translation>
    </message>
    <message>
        <source>Only templates of your own can be removed</source>
        <translation>Удалить можно только собственные шаблоны</translation>
    </message>
    <message>
        <source>It cannot be removed: %1</source>
        <translation>Не удаётся удалить: %1</translation>
    </message>
</context>
<context>
    <name>norvo::TemplateSheet</name>
    <message>
        <source>Save as a template</source>
        <translation>Сохранить как шаблон</translation>
    </message>
    <message>
        <source>The selected devices and the connections among them will stand in Add, under Templates, for every panel that you edit.</source>
        <translation>Выбранные устройства и соединения между ними появятся в «Новое», среди шаблонов, для каждой панели, которую вы правите.</translation>
    </message>
    <message>
        <source>Name of the template</source>
        <translation>Имя шаблона</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Сохранить</translation>
    </message>
</context>
<context>
    <name>norvo::DeviceGroup</name>
    <message>
        <source>These are no devices of a panel: %1</source>
        <translation>Это не устройства панели: %1</translation>
    </message>
    <message>
        <source>No devices have been copied</source>
        <translation>Устройства не скопированы</translation>
    </message>
</context>
</TS>
