<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name></name>
    <message id="onboarding.window.title">
        <source>Welcome to Tarnwell</source>
        <extracomment>Title of the first-run window</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="onboarding.taskInHand.title">
        <source>One task in hand</source>
        <extracomment>First-run page heading about the task in hand</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="onboarding.taskInHand.body">
        <source>The first open task of today is the one you are working on. Start its timer and Tarnwell measures the time you really spend against what you planned.</source>
        <extracomment>First-run page text about the task in hand</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="onboarding.quickAdd.title">
        <source>Add a task in one line</source>
        <extracomment>First-run page heading about quick add</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="onboarding.quickAdd.body">
        <source>Type a title, then a middle dot or a tilde and the details: “Write report · 45m tomorrow !” plans 45 minutes tomorrow and puts it first.</source>
        <extracomment>First-run page text about the quick-add syntax; keep the example line as it is</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="onboarding.hotkeys.title">
        <source>Keys that work everywhere</source>
        <extracomment>First-run page heading about the global hot keys</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="onboarding.hotkeys.body">
        <source>One key opens your day and another adds a task, from any application. You can change both in the settings.</source>
        <extracomment>First-run page text about the global hot keys</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="onboarding.tray.title">
        <source>At home in the tray</source>
        <extracomment>First-run page heading about the tray</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="onboarding.tray.body">
        <source>Tarnwell has no main window. Its icon in the tray shows the task in hand and the time left; click it to see your day.</source>
        <extracomment>First-run page text about the status item in the tray</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="onboarding.back">
        <source>Back</source>
        <extracomment>Button that goes back one first-run page</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="onboarding.next">
        <source>Next</source>
        <extracomment>Button that shows the next first-run page</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="onboarding.finish">
        <source>Get started</source>
        <extracomment>Button that closes the first-run window</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="error.repository.titleEmpty">
        <source>A task needs a title.</source>
        <extracomment>Shown when a task title is empty</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="error.repository.titleTooLong" numerus="yes">
        <source>A title can have at most %n characters.</source>
        <extracomment>Shown when a task title exceeds the maximum character limit</extracomment>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message id="error.repository.reorderMismatch">
        <source>The list changed while you were reordering it. Please try again.</source>
        <extracomment>Shown when reorderTasks receives an order list that does not match the day&apos;s task ids</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="error.repository.dayNotFound">
        <source>That day could not be found.</source>
        <extracomment>Shown when a Day row cannot be located for a given date</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
