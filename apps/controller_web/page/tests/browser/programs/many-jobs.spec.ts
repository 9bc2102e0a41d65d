import { jobListOf } from '../kit/job-list.ts';
import { grid, rowOf } from '../kit/mock.ts';
import { expect, test, usualContents } from '../kit/real.ts';

test.use({ contents: { ...usualContents, jobList: jobListOf(100_000) } });
test.slow();

test('100,000 jobs of the host are shown, scrolled, filtered and selected, and changes appear', async ({ page, installation }) => {
  await expect(page.getByText('100,000 jobs', { exact: true })).toBeVisible();
  await expect(grid(page)).toHaveAttribute('aria-rowcount', '100001');
  expect(await page.getByRole('row').count()).toBeLessThan(60);
  await grid(page).evaluate((element) => (element.scrollTop = element.scrollHeight / 2));
  await expect(rowOf(page, 50_000)).toBeInViewport();
  await grid(page).focus();
  await page.keyboard.press('End');
  await expect(rowOf(page, 1)).toBeInViewport();
  await page.getByRole('button', { name: /^Failed/ }).click();
  await expect(page.getByText('5,882 of 100,000 jobs')).toBeVisible();
  await page.getByRole('searchbox').fill('flange_51');
  await expect(rowOf(page, 51_408)).toBeVisible();
  await page.getByRole('button', { name: /^Failed/ }).click();
  await page.getByRole('searchbox').fill('');
  installation.run('prints_markup.rb');
  await page.keyboard.press('Escape');
  await grid(page).focus();
  await page.keyboard.press('Home');
  await expect(rowOf(page, 100_001)).toContainText('Succeeded');
  await page.keyboard.press('Control+a');
  await expect(page.getByText('100,001 selected')).toBeVisible();
});
