import type { Page } from '@playwright/test';

interface Shown {
  title: string;
  tag: string;
}

interface Recorded {
  asked: number;
  shown: Shown[];
  isHidden: boolean;
}

/** Runs in the page, before its own scripts. The browser of the tests shows no notifications, so this records them. Like a
 * browser it remembers the user's answer. */
function replaceNotifications(answer: NotificationPermission): void {
  const recorded: Recorded = { asked: 0, shown: [], isHidden: false };
  class Recorder {
    static get permission(): string {
      return sessionStorage.getItem('permission') ?? 'default';
    }
    static async requestPermission(): Promise<string> {
      recorded.asked++;
      sessionStorage.setItem('permission', answer);
      return answer;
    }
    constructor(title: string, options: { tag: string }) {
      if (Recorder.permission === 'granted') recorded.shown.push({ title, tag: options.tag });
    }
  }
  Object.assign(window, { Notification: Recorder, recorded });
  Object.defineProperty(document, 'visibilityState', { get: () => (recorded.isHidden ? 'hidden' : 'visible') });
}

/** The notifications of a page whose user gives this answer when asked. Create it before the page is opened. */
export class Notifications {
  private constructor(private readonly page: Page) {}

  static async of(page: Page, answer: NotificationPermission): Promise<Notifications> {
    await page.addInitScript(replaceNotifications, answer);
    return new Notifications(page);
  }

  /** What the page has asked for and shown since it was loaded. */
  recorded(): Promise<Recorded> {
    return this.page.evaluate(() => (window as unknown as { recorded: Recorded }).recorded);
  }

  async titles(): Promise<string[]> {
    return (await this.recorded()).shown.map(({ title }) => title);
  }

  /** As if the user looked at another tab, or came back. */
  async hide(isHidden: boolean): Promise<void> {
    await this.page.evaluate((value) => ((window as unknown as { recorded: Recorded }).recorded.isHidden = value), isHidden);
  }
}
